// Typed reading of attributes.
#include "windows/attribute_readers.h"

#include <utility>

#include "windows/checked_number.h"

namespace tilora {
namespace {

template <class Value>
std::optional<Value> read(const AccessibilityElement& element, AttributeName name) {
  auto value = element.value(name);
  if (!value) return std::nullopt;
  auto* typed = std::get_if<Value>(&*value);
  if (!typed) return std::nullopt;
  return std::move(*typed);
}

}  // namespace

const std::string* textIn(const std::optional<AttributeValue>& value) { return value ? std::get_if<std::string>(&*value) : nullptr; }

std::optional<std::string> readString(const AccessibilityElement& element, AttributeName name) { return read<std::string>(element, name); }

std::optional<bool> readBoolean(const AccessibilityElement& element, AttributeName name) {
  const auto value = element.value(name);
  if (!value) return std::nullopt;
  if (const auto* truth = std::get_if<bool>(&*value)) return *truth;
  if (const auto* number = std::get_if<Number>(&*value)) return number->toBool();
  return std::nullopt;
}

std::optional<std::int64_t> readInteger(const AccessibilityElement& element, AttributeName name) {
  const auto value = element.value(name);
  if (!value) return std::nullopt;
  if (const auto* number = std::get_if<Number>(&*value)) return number->toInteger();
  if (const auto* truth = std::get_if<bool>(&*value)) return *truth ? 1 : 0;
  return std::nullopt;
}

std::optional<std::vector<Element>> readElements(const AccessibilityElement& element, AttributeName name) {
  return read<std::vector<Element>>(element, name);
}

std::optional<Point> readPoint(const AccessibilityElement& element, AttributeName name) { return read<Point>(element, name); }

std::optional<Size> readSize(const AccessibilityElement& element, AttributeName name) { return read<Size>(element, name); }

Element readElement(const AccessibilityElement& element, AttributeName name) { return read<Element>(element, name).value_or(nullptr); }

std::int64_t windowNumberOf(const AccessibilityElement& window) {
  if (const auto number = readInteger(window, AttributeName::windowNumber)) return *number;
  return checkedInteger<std::int64_t>(window.hash());
}

}  // namespace tilora
