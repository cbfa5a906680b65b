// Writing a window's frame.
#pragma once

#include "platform/accessibility.h"

namespace tilora {

/// Writes the position, then the size, once each, or neither when one of them cannot be boxed. Window coordinates.
void writeFrame(Accessibility& accessibility, AccessibilityElement& window, Point position, Size size);

/// Writes the position alone.
void writePosition(Accessibility& accessibility, AccessibilityElement& window, Point position);

}  // namespace tilora
