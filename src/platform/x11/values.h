// Whole-pixel rectangles and the widths around them. Root coordinates: origin at the top-left of the root window, y downwards.
#pragma once

#include <algorithm>

#include "platform/geometry.h"

namespace tilora::x11 {

struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
  int centerX() const { return x + width / 2; }
  int centerY() const { return y + height / 2; }
  bool isEmpty() const { return width <= 0 || height <= 0; }
  bool contains(int px, int py) const { return px >= x && px < right() && py >= y && py < bottom(); }
  bool operator==(const PixelRect&) const = default;
};

/// What both rectangles cover; empty when they do not meet.
inline PixelRect intersection(const PixelRect& a, const PixelRect& b) {
  const int left = std::max(a.x, b.x);
  const int top = std::max(a.y, b.y);
  return {left, top, std::min(a.right(), b.right()) - left, std::min(a.bottom(), b.bottom()) - top};
}

/// Widths in pixels along the four edges of a window, in the order of _NET_FRAME_EXTENTS.
struct Extents {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;

  bool operator==(const Extents&) const = default;
};

/// What the user sees of a client window: the decorations count, the invisible shadow of a client-side-decorated one does not.
inline PixelRect visibleFrame(const PixelRect& client, const Extents& decoration, const Extents& shadow) {
  return {client.x - decoration.left + shadow.left, client.y - decoration.top + shadow.top,
          client.width + decoration.left + decoration.right - shadow.left - shadow.right,
          client.height + decoration.top + decoration.bottom - shadow.top - shadow.bottom};
}

/// The client window that shows as `visible`: the inverse of `visibleFrame`.
inline PixelRect clientRect(const PixelRect& visible, const Extents& decoration, const Extents& shadow) {
  return {visible.x + decoration.left - shadow.left, visible.y + decoration.top - shadow.top,
          visible.width - decoration.left - decoration.right + shadow.left + shadow.right,
          visible.height - decoration.top - decoration.bottom + shadow.top + shadow.bottom};
}

/// The size hints of ICCCM 4.1.2.3 that matter here; 0: no such limit.
struct SizeLimits {
  int minWidth = 0;
  int minHeight = 0;
  int maxWidth = 0;
  int maxHeight = 0;
  int widthIncrement = 0;
  int heightIncrement = 0;

  bool isFixed() const { return minWidth > 0 && minHeight > 0 && minWidth == maxWidth && minHeight == maxHeight; }
  bool operator==(const SizeLimits&) const = default;
};

}  // namespace tilora::x11
