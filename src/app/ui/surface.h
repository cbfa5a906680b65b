// A filled and outlined rounded rectangle, for the views.
#pragma once

#include <QColor>
#include <QPainterPath>
#include <QQuickPaintedItem>

namespace tilora::app {

/// A rectangle whose corners have about the given radius, and grow out of the sides without a jump in curvature when `continuous`. A radius
/// of half the height makes a capsule. Corners never reach past the middle of a side.
QPainterPath roundedRectangle(const QRectF& rect, double radius, bool continuous);

/// Draws its whole area; the outline lies inside.
class Surface : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double radius MEMBER radius_ NOTIFY changed)
  Q_PROPERTY(bool continuous MEMBER continuous_ NOTIFY changed)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
  Q_PROPERTY(QColor outlineColor MEMBER outlineColor_ NOTIFY changed)
  Q_PROPERTY(double outlineWidth MEMBER outlineWidth_ NOTIFY changed)

 public:
  explicit Surface(QQuickItem* parent = nullptr);

  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void changed();

 private:
  double radius_ = 0;
  bool continuous_ = false;
  QColor color_ = Qt::transparent;
  QColor outlineColor_ = Qt::transparent;
  double outlineWidth_ = 0;
};

}  // namespace tilora::app
