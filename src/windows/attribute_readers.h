// Typed reading of attributes. Whatever fails, and whatever has another type, is absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/accessibility.h"

namespace tilora {

/// The text that reading an attribute gave; null when it gave none.
const std::string* textIn(const std::optional<AttributeValue>& value);

std::optional<std::string> readString(const AccessibilityElement& element, AttributeName name);
/// The truth value of a number object.
std::optional<bool> readBoolean(const AccessibilityElement& element, AttributeName name);
/// A number object as a signed 64-bit integer.
std::optional<std::int64_t> readInteger(const AccessibilityElement& element, AttributeName name);
std::optional<std::vector<Element>> readElements(const AccessibilityElement& element, AttributeName name);
/// In points with a top-left origin.
std::optional<Point> readPoint(const AccessibilityElement& element, AttributeName name);
std::optional<Size> readSize(const AccessibilityElement& element, AttributeName name);
/// Null when absent.
Element readElement(const AccessibilityElement& element, AttributeName name);

/// The number that names a window while it lives: its "AXWindowNumber", or its hash where it has none. A hash beyond the signed range is
/// fatal.
std::int64_t windowNumberOf(const AccessibilityElement& window);

}  // namespace tilora
