// Between the coordinates of windows (top-left origin, y downwards) and those of screens (bottom-left origin, y upwards).
#pragma once

#include <vector>

#include "platform/geometry.h"
#include "platform/screens.h"

namespace tilora {

/// The largest top edge of all screens, in screen coordinates; 0 without screens.
double topEdge(const std::vector<ScreenRef>& screens);

/// A window's rectangle in screen coordinates; `top` is the top edge of all screens.
Rect screenRect(const Rect& windowRect, double top);

/// Where a rectangle in screen coordinates goes as a window's position.
Point windowPosition(const Rect& screenRect, double top);

}  // namespace tilora
