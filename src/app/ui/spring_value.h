// A number that follows its target on a spring, for the views.
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractAnimation>

#include "app/ui/spring.h"

namespace tilora::app {

/// `value` moves to `target` whenever that changes, from where it is and with the velocity it has. It costs nothing at rest.
class SpringValue : public QAbstractAnimation {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double target READ target WRITE setTarget NOTIFY targetChanged)
  Q_PROPERTY(double value READ value NOTIFY valueChanged)
  Q_PROPERTY(double response READ response WRITE setResponse NOTIFY springChanged)
  Q_PROPERTY(double dampingFraction READ dampingFraction WRITE setDampingFraction NOTIFY springChanged)

 public:
  using QAbstractAnimation::QAbstractAnimation;

  double target() const { return target_; }
  void setTarget(double target);
  double value() const { return now_.position; }
  double response() const { return spring_.response; }
  void setResponse(double seconds);
  double dampingFraction() const { return spring_.dampingFraction; }
  void setDampingFraction(double fraction);

  /// Until it stops itself.
  int duration() const override { return -1; }

 Q_SIGNALS:
  void targetChanged();
  void valueChanged();
  void springChanged();

 protected:
  void updateCurrentTime(int milliseconds) override;

 private:
  Spring spring_;
  double target_ = 0;
  SpringState start_;
  SpringState now_;
};

}  // namespace tilora::app
