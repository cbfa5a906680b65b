// Rectangles on an X screen.
#pragma once

#include <ostream>

namespace tilora::harness {

/// A rectangle in pixels of the root window, origin at the top-left, y downwards.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
  bool contains(const PixelRect& other) const {
    return other.x >= x && other.y >= y && other.right() <= right() && other.bottom() <= bottom();
  }
  bool overlaps(const PixelRect& other) const { return other.x < right() && x < other.right() && other.y < bottom() && y < other.bottom(); }

  bool operator==(const PixelRect&) const = default;
};

/// The four edges of a frame, as the extents properties give them.
struct Extents {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;

  bool operator==(const Extents&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const PixelRect& rect) {
  return stream << rect.width << "x" << rect.height << "+" << rect.x << "+" << rect.y;
}

inline std::ostream& operator<<(std::ostream& stream, const Extents& extents) {
  return stream << "left " << extents.left << " right " << extents.right << " top " << extents.top << " bottom " << extents.bottom;
}

}  // namespace tilora::harness
