// Where a window has to be for each placement, worked out here once more and in pixels: what Tilora is measured against.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "harness/geometry.h"

namespace tilora::harness {

enum class Place : std::uint8_t { full, left, right, floating };

/// "fills", "is the left half of" and so on, to go before the name of a monitor.
std::string verbOf(Place place);

inline std::ostream& operator<<(std::ostream& stream, Place place) { return stream << verbOf(place) << " the screen"; }

/// The four edges of a rectangle on the X screen, in pixels from the top-left of the root; y downwards.
struct Edges {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

/// How far a window's width and height step at a time; 0: any pixel.
struct Steps {
  int width = 0;
  int height = 0;
};

/// The gap that Tilora starts with, in pixels.
inline constexpr double defaultGap = 12;

/// The edges for `place` on a monitor of which the panels leave `visible` free.
Edges edgesOf(Place place, const PixelRect& visible, double gap = defaultGap);

/// Whether a frame has these edges, each rounded to a pixel; one that grows in steps may end up to one step before the right and the bottom
/// edge.
bool fits(const PixelRect& frame, const Edges& wanted, const Steps& steps);

}  // namespace tilora::harness
