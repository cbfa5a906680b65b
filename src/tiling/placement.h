// The places a window can have on its screen, and where they are: pure arithmetic, no desktop is touched.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/geometry.h"

namespace tilora {

/// Where a window belongs on its screen. A window that has none counts as `full`.
enum class WindowPlacement : std::uint8_t { full, left, right, floatCenter };

/// The stored form: "full", "left", "right" or "floatCenter".
std::string_view text(WindowPlacement placement);

/// The placement of exactly that stored form, or nothing.
std::optional<WindowPlacement> placementFrom(std::string_view text);

/// The placement on the other half; nothing for one that is no half.
std::optional<WindowPlacement> oppositeOf(WindowPlacement placement);

/// The frame of `placement` on a screen whose visible frame is `visible`.
///
/// Screen coordinates in points, origin bottom-left, y upwards; `padding` is the gap in points. The gap between a left and a right frame
/// equals the gap at the outer edges. Nothing is rounded; a padding too large for the screen gives a negative `full` frame, while the
/// others keep at least one point.
Rect frameForPlacement(WindowPlacement placement, const Rect& visible, double padding);

/// The frame of a window that keeps its `size`: centred on the frame of its placement, kept inside the padded area and cut down to it.
/// Nothing when no positive size is left.
std::optional<Rect> fittedFrame(WindowPlacement placement, const Rect& visible, double padding, Size size);

}  // namespace tilora
