// From the coordinates of macOS screens to Qt's.
#pragma once

#include <QRect>
#include <vector>

#include "platform/screens.h"

namespace tilora::app {

/// A place in points with its origin at the bottom-left of the first screen, as Qt has it there: from that screen's top-left, downwards.
QRect placeInQt(const Rect& place, const std::vector<ScreenRef>& screens);

}  // namespace tilora::app
