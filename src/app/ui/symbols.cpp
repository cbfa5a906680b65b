// Drawing the symbols on a grid of 16 by 16 units, fitted to the pixels.
#include "app/ui/symbols.h"

#include <QPainterPathStroker>
#include <QQuickWindow>
#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "app/ui/surface.h"

namespace tilora::app {
namespace {

constexpr double gridSide = 16;
constexpr double lineUnits = 1.5;

/// Turns grid units into the units of the picture, on whole pixels where asked.
class Grid {
 public:
  Grid(double side, double pixelRatio) : unit_(side / gridSide), pixel_(1 / pixelRatio) {}

  double length(double units) const { return units * unit_; }
  double fitted(double units) const { return std::round(units * unit_ / pixel_) * pixel_; }
  /// The width of a line: whole pixels, at least one.
  double line() const { return std::max(fitted(lineUnits), pixel_); }
  QPointF point(double x, double y) const { return {length(x), length(y)}; }
  QRectF rect(double left, double top, double right, double bottom) const {
    return {QPointF(fitted(left), fitted(top)), QPointF(fitted(right), fitted(bottom))};
  }
  QPainterPath filled(const QRectF& area, double radiusUnits) const { return roundedRectangle(area, length(radiusUnits), false); }
  /// A frame one line wide, inside `area`.
  QPainterPath frame(const QRectF& area, double radiusUnits) const {
    const QRectF hole = area.adjusted(line(), line(), -line(), -line());
    return filled(area, radiusUnits).subtracted(roundedRectangle(hole, std::max(length(radiusUnits) - line(), 0.0), false));
  }
  QPainterPath disc(double x, double y, double radius) const {
    QPainterPath path;
    path.addEllipse(point(x, y), length(radius), length(radius));
    return path;
  }

 private:
  double unit_;
  double pixel_;
};

QPainterPath halfFilledSquare(const Grid& grid, bool left) {
  const QRectF square = grid.rect(2, 2, 14, 14);
  QRectF half = square;
  const double middle = grid.fitted(8);
  if (left) {
    half.setRight(middle);
  } else {
    half.setLeft(middle);
  }
  QPainterPath clip;
  clip.addRect(half);
  return grid.frame(square, 3).united(grid.filled(square, 3).intersected(clip));
}

QPainterPath rectangleWithInset(const Grid& grid, const QRectF& inset) {
  return grid.frame(grid.rect(0, 2, 16, 14), 2.5).united(grid.filled(inset, 0.8));
}

QPainterPath sliders(const Grid& grid) {
  constexpr std::array<std::pair<double, double>, 3> knobs = {{{10, 3.5}, {6, 8}, {10, 12.5}}};
  constexpr double knobRadius = 2.1;
  constexpr double gapRadius = 3.1;
  QPainterPath path;
  for (const auto& [x, y] : knobs) {
    const double top = grid.fitted(y - lineUnits / 2);
    const QRectF rail(QPointF(grid.fitted(1), top), QPointF(grid.fitted(15), top + grid.line()));
    const double centre = rail.center().y() / grid.length(1);
    path = path.united(grid.filled(rail, lineUnits / 2).subtracted(grid.disc(x, centre, gapRadius)));
    path = path.united(grid.disc(x, centre, knobRadius).subtracted(grid.disc(x, centre, knobRadius - lineUnits * 0.75)));
  }
  return path;
}

/// An arc over most of half a turn, with an arrow head at its end.
QPainterPath turningArrow(const Grid& grid) {
  constexpr double radius = 5.6;
  constexpr double fromAngle = 172;
  constexpr double sweep = -128;
  constexpr double headLength = 3.4;
  constexpr double headHalf = 2.7;
  QPainterPath arc;
  const QRectF circle(grid.point(8 - radius, 8 - radius), grid.point(8 + radius, 8 + radius));
  arc.arcMoveTo(circle, fromAngle);
  arc.arcTo(circle, fromAngle, sweep);
  QPainterPathStroker stroker;
  stroker.setWidth(grid.line());
  stroker.setCapStyle(Qt::FlatCap);
  QPainterPath head;
  head.moveTo(grid.point(headLength, 0));
  head.lineTo(grid.point(-headLength / 3, -headHalf));
  head.lineTo(grid.point(-headLength / 3, headHalf));
  head.closeSubpath();
  QTransform place;
  place.translate(arc.currentPosition().x(), arc.currentPosition().y());
  place.rotate(90 - (fromAngle + sweep));
  return stroker.createStroke(arc).united(place.map(head));
}

QPainterPath circlingArrows(const Grid& grid) {
  const QPainterPath arrow = turningArrow(grid);
  QTransform halfTurn;
  halfTurn.translate(grid.length(gridSide), grid.length(gridSide));
  halfTurn.rotate(180);
  return arrow.united(halfTurn.map(arrow));
}

QPainterPath gridOfNine(const Grid& grid) {
  constexpr int cells = 3;
  constexpr double cell = 4;
  constexpr double pitch = 5;
  QPainterPath path;
  const double start = grid.fitted(1);
  for (int i = 0; i < cells * cells; ++i) {
    const int column = i % cells;
    const int row = i / cells;
    const double left = start + column * grid.fitted(pitch);
    const double top = start + row * grid.fitted(pitch);
    path.addPath(grid.filled({left, top, grid.fitted(cell), grid.fitted(cell)}, 0.7));
  }
  return path;
}

/// The mark from `top` to `bottom`, its dot included.
QPainterPath exclamationMark(const Grid& grid, double top, double bottom) {
  constexpr double dotRadius = 1;
  constexpr double upper = 0.95;
  constexpr double lower = 0.65;
  constexpr double dotGap = 1;
  const double end = bottom - 2 * dotRadius - dotGap;
  QPainterPath bar;
  bar.moveTo(grid.point(8 - upper, top));
  bar.lineTo(grid.point(8 + upper, top));
  bar.lineTo(grid.point(8 + lower, end));
  bar.lineTo(grid.point(8 - lower, end));
  bar.closeSubpath();
  return bar.united(grid.disc(8, bottom - dotRadius, dotRadius));
}

QPainterPath warningTriangle(const Grid& grid) {
  QPainterPath sharp;
  sharp.moveTo(grid.point(8, 2.6));
  sharp.lineTo(grid.point(14.2, 13.4));
  sharp.lineTo(grid.point(1.8, 13.4));
  sharp.closeSubpath();
  QPainterPathStroker rounding;
  rounding.setWidth(grid.length(2.4));
  rounding.setJoinStyle(Qt::RoundJoin);
  return rounding.createStroke(sharp).united(sharp).subtracted(exclamationMark(grid, 5.2, 12.8));
}

QPainterPath stack(const Grid& grid) {
  QPainterPath path = grid.filled(grid.rect(0, 7, 16, 15), 2);
  path.addPath(grid.filled(grid.rect(2, 4, 14, 5.5), 0.75));
  path.addPath(grid.filled(grid.rect(4, 1, 12, 2.5), 0.75));
  return path;
}

struct NamedSymbol {
  const char* name;
  QPainterPath (*draw)(const Grid&);
};

constexpr std::array symbols = {
    NamedSymbol{"slider.horizontal.3", sliders},
    NamedSymbol{"arrow.triangle.2.circlepath", circlingArrows},
    NamedSymbol{"square.lefthalf.filled", [](const Grid& grid) { return halfFilledSquare(grid, true); }},
    NamedSymbol{"square.righthalf.filled", [](const Grid& grid) { return halfFilledSquare(grid, false); }},
    NamedSymbol{"rectangle.inset.filled", [](const Grid& grid) { return rectangleWithInset(grid, grid.rect(3, 5, 13, 11)); }},
    NamedSymbol{"rectangle.center.inset.filled", [](const Grid& grid) { return rectangleWithInset(grid, grid.rect(5, 6, 11, 10)); }},
    NamedSymbol{"square.grid.3x3", gridOfNine},
    NamedSymbol{"exclamationmark.triangle.fill", warningTriangle},
    NamedSymbol{"exclamationmark.circle.fill",
                [](const Grid& grid) { return grid.disc(8, 8, 7.2).subtracted(exclamationMark(grid, 3.6, 12.4)); }},
    NamedSymbol{"rectangle.stack.fill", stack},
};

}  // namespace

QStringList symbolNames() {
  QStringList names;
  for (const auto& symbol : symbols) names << QString::fromLatin1(symbol.name);
  return names;
}

QPainterPath symbolPath(const QString& name, double side, double pixelRatio) {
  const auto* const found =
      std::find_if(symbols.begin(), symbols.end(), [&](const NamedSymbol& symbol) { return name == QLatin1String(symbol.name); });
  return found == symbols.end() ? QPainterPath() : found->draw(Grid(side, pixelRatio));
}

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &Symbol::changed, this, [this] { update(); });
}

void Symbol::paint(QPainter* painter) {
  const double ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1;
  const double side = std::floor(std::min(width(), height()) * ratio) / ratio;
  const auto middle = [&](double room) { return std::floor((room - side) / 2 * ratio) / ratio; };
  painter->setRenderHint(QPainter::Antialiasing);
  painter->translate(middle(width()), middle(height()));
  painter->fillPath(symbolPath(name_, side, ratio), color_);
}

}  // namespace tilora::app
