// From the desktop's screens to Qt's.
#pragma once

#include <QRect>
#include <vector>

#include "platform/screens.h"

namespace tilora::app {

/// The part of one of Qt's screens that panels leave free, in Qt's coordinates. `geometry` is Qt's of that screen, whose origin is in
/// pixels and whose size is in units of `pixelRatio` pixels; `screens` are the desktop's, in pixels with their origin at the bottom. The
/// whole screen when the desktop does not have it.
QRect visibleFrameIn(const std::vector<ScreenRef>& screens, const QRect& geometry, double pixelRatio);

}  // namespace tilora::app
