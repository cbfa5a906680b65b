// From the coordinates of macOS screens to Qt's.
#include "app/mac_coordinates.h"

namespace tilora::app {

QRect placeInQt(const Rect& place, const std::vector<ScreenRef>& screens) {
  const double top = screens.empty() ? place.maxY() : screens.front()->frame.maxY();
  return QRectF(place.x, top - place.maxY(), place.width, place.height).toAlignedRect();
}

}  // namespace tilora::app
