// The damped harmonic oscillator.
#include "app/ui/spring.h"

#include <cmath>
#include <numbers>

namespace tilora::app {
namespace {

constexpr double invisibleDistance = 0.001;
constexpr double invisibleVelocity = 0.05;

}  // namespace

SpringState Spring::after(const SpringState& start, double target, double seconds) const {
  const double frequency = 2 * std::numbers::pi / response;
  const double decay = dampingFraction * frequency;
  const double damped = frequency * std::sqrt(1 - dampingFraction * dampingFraction);
  const double distance = start.position - target;
  const double swing = (start.velocity + decay * distance) / damped;
  const double cosine = std::cos(damped * seconds);
  const double sine = std::sin(damped * seconds);
  const double envelope = std::exp(-decay * seconds);
  return {.position = target + envelope * (distance * cosine + swing * sine),
          .velocity = envelope * ((swing * damped - decay * distance) * cosine - (distance * damped + decay * swing) * sine)};
}

bool hasSettled(const SpringState& state, double target) {
  return std::abs(state.position - target) < invisibleDistance && std::abs(state.velocity) < invisibleVelocity;
}

}  // namespace tilora::app
