// The colours and fonts of the views, from the desktop's own.
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QObject>
#include <QString>

namespace tilora::app {

/// The roles that the views paint with, taken from the application's palette and following it.
class Theme : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QColor windowBackground READ windowBackground NOTIFY changed)
  Q_PROPERTY(QColor controlBackground READ controlBackground NOTIFY changed)
  Q_PROPERTY(QColor control READ control NOTIFY changed)
  Q_PROPERTY(QColor separator READ separator NOTIFY changed)
  Q_PROPERTY(QColor text READ text NOTIFY changed)
  Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
  Q_PROPERTY(QColor accent READ accent NOTIFY changed)
  Q_PROPERTY(QColor link READ link NOTIFY changed)
  Q_PROPERTY(QColor orange READ orange NOTIFY changed)
  Q_PROPERTY(QColor orangeText READ orangeText NOTIFY changed)
  Q_PROPERTY(QColor redText READ redText NOTIFY changed)
  Q_PROPERTY(QString monospacedFamily READ monospacedFamily CONSTANT)
  Q_PROPERTY(QString roundedFamily READ roundedFamily CONSTANT)

 public:
  explicit Theme(QObject* parent = nullptr);

  QColor windowBackground() const;
  QColor controlBackground() const;
  /// The face of a button.
  QColor control() const;
  QColor separator() const;
  QColor text() const;
  QColor secondaryText() const;
  QColor accent() const;
  QColor link() const;
  /// The face of a button.
  QColor orange() const;
  /// Orange and red at a brightness at which a line of small text is read well.
  QColor orangeText() const;
  QColor redText() const;
  QString monospacedFamily() const;
  /// The rounded design of the application's font; the font itself where none is installed.
  QString roundedFamily() const;

  /// The same colour, `share` of it: 0 is nothing, 1 all of it.
  Q_INVOKABLE QColor faded(const QColor& color, double share) const;
  /// What is read best on a filled area of that colour.
  Q_INVOKABLE QColor textOn(const QColor& background) const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void changed();

 private:
  bool isDark() const;
};

}  // namespace tilora::app
