// Between the coordinates of windows and those of screens.
#include "windows/coordinates.h"

#include <algorithm>

namespace tilora {

double topEdge(const std::vector<ScreenRef>& screens) {
  if (screens.empty()) return 0;
  double top = screens.front()->frame.maxY();
  for (const auto& screen : screens) top = std::max(top, screen->frame.maxY());
  return top;
}

Rect screenRect(const Rect& windowRect, double top) {
  return {windowRect.x, top - (windowRect.y + windowRect.height), windowRect.width, windowRect.height};
}

Point windowPosition(const Rect& screenRect, double top) { return {screenRect.minX(), top - screenRect.maxY()}; }

}  // namespace tilora
