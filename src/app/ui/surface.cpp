// Corners as one cubic curve each, and painting them.
#include "app/ui/surface.h"

#include <QPainter>
#include <algorithm>
#include <numbers>

namespace tilora::app {
namespace {

/// How far along the side a continuous corner begins, in radii.
constexpr double continuousReach = 1.53;
/// The same for a corner that is a quarter of a circle.
constexpr double circularReach = 1;

/// The distance of the control points from the ends of a corner that reaches `reach`, such that the middle of the curve lies where that of
/// a circle of `radius` does.
double handle(double reach, double radius) {
  const double middle = radius * (1 - std::numbers::sqrt2 / 2);
  return (4 * reach - 8 * middle) / 3;
}

}  // namespace

QPainterPath roundedRectangle(const QRectF& rect, double radius, bool continuous) {
  const double room = std::min(rect.width(), rect.height()) / 2;
  const double fitting = std::clamp(radius, 0.0, room);
  const double reach = std::min(fitting * (continuous ? continuousReach : circularReach), room);
  const double grip = handle(reach, fitting);
  QPainterPath path;
  path.moveTo(rect.left() + reach, rect.top());
  path.lineTo(rect.right() - reach, rect.top());
  path.cubicTo({rect.right() - reach + grip, rect.top()}, {rect.right(), rect.top() + reach - grip}, {rect.right(), rect.top() + reach});
  path.lineTo(rect.right(), rect.bottom() - reach);
  path.cubicTo({rect.right(), rect.bottom() - reach + grip}, {rect.right() - reach + grip, rect.bottom()},
               {rect.right() - reach, rect.bottom()});
  path.lineTo(rect.left() + reach, rect.bottom());
  path.cubicTo({rect.left() + reach - grip, rect.bottom()}, {rect.left(), rect.bottom() - reach + grip},
               {rect.left(), rect.bottom() - reach});
  path.lineTo(rect.left(), rect.top() + reach);
  path.cubicTo({rect.left(), rect.top() + reach - grip}, {rect.left() + reach - grip, rect.top()}, {rect.left() + reach, rect.top()});
  return path;
}

Surface::Surface(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &Surface::changed, this, [this] { update(); });
}

void Surface::paint(QPainter* painter) {
  painter->setRenderHint(QPainter::Antialiasing);
  const QRectF area(0, 0, width(), height());
  painter->fillPath(roundedRectangle(area, radius_, continuous_), color_);
  if (outlineWidth_ <= 0 || outlineColor_.alpha() == 0) return;
  const double half = outlineWidth_ / 2;
  const QRectF middle = area.adjusted(half, half, -half, -half);
  painter->strokePath(roundedRectangle(middle, std::max(radius_ - half, 0.0), continuous_), QPen(outlineColor_, outlineWidth_));
}

}  // namespace tilora::app
