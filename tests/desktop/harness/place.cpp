// The arithmetic of the placements.
#include "harness/place.h"

#include <cmath>

namespace tilora::harness {
namespace {

/// Half a pixel may be rounded either way.
bool near(int edge, double wanted) { return std::abs(edge - wanted) <= 0.5; }

bool endsAt(int edge, double wanted, int step) { return step == 0 ? near(edge, wanted) : edge < wanted + 1 && edge > wanted - step - 1; }

}  // namespace

std::string verbOf(Place place) {
  switch (place) {
    case Place::full:
      return "fills";
    case Place::left:
      return "is the left half of";
    case Place::right:
      return "is the right half of";
    case Place::floating:
      return "floats in the middle of";
  }
  return {};
}

Edges edgesOf(Place place, const PixelRect& visible, double gap) {
  const Edges area = {visible.x + gap, visible.y + gap, visible.right() - gap, visible.bottom() - gap};
  const double width = area.right - area.left;
  const double height = area.bottom - area.top;
  const double half = (width - gap) / 2;
  switch (place) {
    case Place::full:
      return area;
    case Place::left:
      return {area.left, area.top, area.left + half, area.bottom};
    case Place::right:
      return {area.right - half, area.top, area.right, area.bottom};
    case Place::floating:
      return {area.left + 0.2 * width, area.top + 0.05 * height, area.right - 0.2 * width, area.bottom - 0.05 * height};
  }
  return area;
}

bool fits(const PixelRect& frame, const Edges& wanted, const Steps& steps) {
  return near(frame.x, wanted.left) && near(frame.y, wanted.top) && endsAt(frame.right(), wanted.right, steps.width) &&
         endsAt(frame.bottom(), wanted.bottom, steps.height);
}

}  // namespace tilora::harness
