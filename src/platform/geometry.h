// Points, sizes and rectangles: the numbers that windows and screens are described with.
#pragma once

namespace tilora {

/// A position in points. Which corner is the origin is said where a point is used.
struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};

/// An extent in points. Nothing keeps it positive: other programs report what they like.
struct Size {
  double width = 0;
  double height = 0;

  bool operator==(const Size&) const = default;
};

/// A rectangle in points, given by the corner with the smallest coordinates and its extent. A negative extent is kept as it is: the edges
/// are plain sums, nothing is standardised.
struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  double minX() const { return x; }
  double minY() const { return y; }
  double midX() const { return x + width * 0.5; }
  double midY() const { return y + height * 0.5; }
  double maxX() const { return x + width; }
  double maxY() const { return y + height; }

  /// The rectangle shrunk by `amount` on all four sides; its extents can become negative.
  Rect insetBy(double amount) const { return {x + amount, y + amount, width - 2 * amount, height - 2 * amount}; }

  /// Whether `point` lies in [minX, maxX) × [minY, maxY).
  bool contains(Point point) const { return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY(); }

  bool operator==(const Rect&) const = default;
};

}  // namespace tilora
