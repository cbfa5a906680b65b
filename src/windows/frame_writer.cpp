// Writing a window's frame.
#include "windows/frame_writer.h"

namespace tilora {

void writeFrame(Accessibility& accessibility, AccessibilityElement& window, Point position, Size size) {
  const auto boxedPosition = accessibility.boxed(position);
  const auto boxedSize = accessibility.boxed(size);
  if (!boxedPosition || !boxedSize) return;
  window.set(AttributeName::position, *boxedPosition);
  window.set(AttributeName::size, *boxedSize);
}

void writePosition(Accessibility& accessibility, AccessibilityElement& window, Point position) {
  const auto boxedPosition = accessibility.boxed(position);
  if (boxedPosition) window.set(AttributeName::position, *boxedPosition);
}

}  // namespace tilora
