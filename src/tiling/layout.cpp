// Putting one window into its placement.
#include "tiling/layout.h"

#include "windows/coordinates.h"
#include "windows/discovery.h"
#include "windows/frame_writer.h"

namespace tilora {
namespace {

void resize(WindowPlacement placement, const ManagedWindow& window, double padding, const Desktop& desktop) {
  const Rect frame = frameForPlacement(placement, window.screen->visibleFrame, padding);
  const Point position = windowPosition(frame, topEdge(desktop.screens.screens()));
  writeFrame(desktop.accessibility, *window.window, position, {frame.width, frame.height});
}

void moveOnly(WindowPlacement placement, const ManagedWindow& window, double padding, const Desktop& desktop) {
  const auto size = usableSize(window.key, *window.window, desktop.windowServer);
  if (!size) return;
  const auto frame = fittedFrame(placement, window.screen->visibleFrame, padding, *size);
  if (!frame) return;
  writePosition(desktop.accessibility, *window.window, windowPosition(*frame, topEdge(desktop.screens.screens())));
}

void put(WindowPlacement placement, const ManagedWindow& window, double padding, const Desktop& desktop) {
  if (window.window->isSettable(AttributeName::size).value_or(false)) {
    resize(placement, window, padding, desktop);
  } else {
    moveOnly(placement, window, padding, desktop);
  }
}

}  // namespace

void applyPlacement(WindowPlacement placement, const ManagedWindow& window, double padding, const Desktop& desktop) {
  if (placement != WindowPlacement::floatCenter) put(placement, window, padding, desktop);
}

void applyFloatCenter(const ManagedWindow& window, double padding, const Desktop& desktop) {
  put(WindowPlacement::floatCenter, window, padding, desktop);
}

}  // namespace tilora
