// Turning the y axis over, and scaling about the screen's corner.
#include "app/ui/visible_frame.h"

#include <algorithm>
#include <cmath>

namespace tilora::app {
namespace {

int rounded(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

QRect visibleFrameIn(const std::vector<ScreenRef>& screens, const QRect& geometry, double pixelRatio) {
  double top = 0;
  for (const auto& screen : screens) top = std::max(top, screen->frame.maxY());
  const auto found = std::find_if(screens.begin(), screens.end(), [&](const ScreenRef& screen) {
    return rounded(screen->frame.x) == geometry.x() && rounded(top - screen->frame.maxY()) == geometry.y();
  });
  if (found == screens.end()) return geometry;
  const Rect& visible = (*found)->visibleFrame;
  const auto scaled = [pixelRatio](double pixels) { return rounded(pixels / pixelRatio); };
  return {geometry.x() + scaled(visible.x - geometry.x()), geometry.y() + scaled(top - visible.maxY() - geometry.y()),
          scaled(visible.width), scaled(visible.height)};
}

}  // namespace tilora::app
