// The symbols of the interface: drawn for Tilora as vectors, each under its system symbol name.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QString>
#include <QStringList>

namespace tilora::app {

/// All names that can be drawn.
QStringList symbolNames();

/// The shape of a symbol in a square of side `side`, origin top-left, to be filled. Its upright and level edges lie on whole pixels when
/// `pixelRatio` pixels make one unit. Empty for a name that is not known.
QPainterPath symbolPath(const QString& name, double side, double pixelRatio);

/// Draws one symbol in the middle of its area.
class Symbol : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString name MEMBER name_ NOTIFY changed)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)

 public:
  explicit Symbol(QQuickItem* parent = nullptr);

  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void changed();

 private:
  QString name_;
  QColor color_;
};

}  // namespace tilora::app
