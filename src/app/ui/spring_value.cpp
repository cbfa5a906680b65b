// Following the target on the clock of Qt's animations.
#include "app/ui/spring_value.h"

namespace tilora::app {

void SpringValue::setTarget(double target) {
  if (target == target_) return;
  target_ = target;
  stop();
  start_ = now_;
  start();
  Q_EMIT targetChanged();
}

void SpringValue::setResponse(double seconds) {
  if (seconds == spring_.response) return;
  spring_.response = seconds;
  Q_EMIT springChanged();
}

void SpringValue::setDampingFraction(double fraction) {
  if (fraction == spring_.dampingFraction) return;
  spring_.dampingFraction = fraction;
  Q_EMIT springChanged();
}

void SpringValue::updateCurrentTime(int milliseconds) {
  if (state() != Running) return;
  now_ = spring_.after(start_, target_, milliseconds / 1000.0);
  const bool settled = hasSettled(now_, target_);
  if (settled) now_ = {.position = target_, .velocity = 0};
  Q_EMIT valueChanged();
  if (settled) stop();
}

}  // namespace tilora::app
