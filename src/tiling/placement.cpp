// The places a window can have on its screen, and where they are.
#include "tiling/placement.h"

#include <algorithm>
#include <array>

namespace tilora {
namespace {

constexpr std::array<std::string_view, 4> names = {"full", "left", "right", "floatCenter"};

/// At least one point; also for a length that is not a number.
double atLeastOne(double length) { return std::max(1.0, length); }

/// The corner of a `length` centred on `middle`, moved so that it lies between `low` and `high`.
double centred(double middle, double length, double low, double high) {
  if (low > high) return low;
  double corner = middle - length * 0.5;
  if (high < corner) corner = high;
  if (low > corner) corner = low;
  return corner;
}

}  // namespace

std::string_view text(WindowPlacement placement) { return names[static_cast<std::size_t>(placement)]; }

std::optional<WindowPlacement> placementFrom(std::string_view text) {
  const auto found = std::find(names.begin(), names.end(), text);
  if (found == names.end()) return std::nullopt;
  return static_cast<WindowPlacement>(found - names.begin());
}

std::optional<WindowPlacement> oppositeOf(WindowPlacement placement) {
  if (placement == WindowPlacement::left) return WindowPlacement::right;
  if (placement == WindowPlacement::right) return WindowPlacement::left;
  return std::nullopt;
}

Rect frameForPlacement(WindowPlacement placement, const Rect& visible, double padding) {
  const Rect inset = visible.insetBy(padding);
  const double halfWidth = atLeastOne(inset.width * 0.5 - padding * 0.5);
  switch (placement) {
    case WindowPlacement::full:
      break;
    case WindowPlacement::left:
      return {inset.minX(), inset.minY(), halfWidth, inset.height};
    case WindowPlacement::right:
      return {inset.maxX() - halfWidth, inset.minY(), halfWidth, inset.height};
    case WindowPlacement::floatCenter: {
      const double width = atLeastOne(inset.width * 0.6);
      const double height = atLeastOne(inset.height * 0.9);
      return {inset.midX() - width * 0.5, inset.midY() - height * 0.5, width, height};
    }
  }
  return inset;
}

std::optional<Rect> fittedFrame(WindowPlacement placement, const Rect& visible, double padding, Size size) {
  const Rect target = frameForPlacement(placement, visible, padding);
  const Rect inset = visible.insetBy(padding);
  const double width = inset.width < size.width ? inset.width : size.width;
  const double height = inset.height < size.height ? inset.height : size.height;
  if (width <= 0 || !(height > 0)) return std::nullopt;
  return Rect{centred(target.midX(), width, inset.minX(), inset.maxX() - width),
              centred(target.midY(), height, inset.minY(), inset.maxY() - height), width, height};
}

}  // namespace tilora
