// The spring against the equation of motion that it solves.
#include "app/ui/spring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "app/ui/interface_session.h"
#include "app/ui/spring_value.h"

namespace tilora::app {
namespace {

constexpr double response = 0.16;
constexpr double dampingFraction = 0.85;
constexpr Spring spring = {response, dampingFraction};

/// The same motion, step by step (Runge and Kutta), from mass, stiffness and damping.
SpringState integrated(SpringState state, double target, double seconds) {
  const double stiffness = std::pow(2 * std::numbers::pi / response, 2);
  const double damping = 4 * std::numbers::pi * dampingFraction / response;
  constexpr int steps = 20000;
  const double h = seconds / steps;
  const auto slope = [&](const SpringState& at) {
    return SpringState{at.velocity, -stiffness * (at.position - target) - damping * at.velocity};
  };
  const auto moved = [](const SpringState& from, const SpringState& by, double time) {
    return SpringState{from.position + by.position * time, from.velocity + by.velocity * time};
  };
  for (int i = 0; i < steps; ++i) {
    const SpringState a = slope(state);
    const SpringState b = slope(moved(state, a, h / 2));
    const SpringState c = slope(moved(state, b, h / 2));
    const SpringState d = slope(moved(state, c, h));
    state.position += h / 6 * (a.position + 2 * b.position + 2 * c.position + d.position);
    state.velocity += h / 6 * (a.velocity + 2 * b.velocity + 2 * c.velocity + d.velocity);
  }
  return state;
}

TEST(Spring, MovesAsItsMassStiffnessAndDampingSay) {
  for (const SpringState start : {SpringState{0, 0}, SpringState{0.4, 12}, SpringState{1.1, -30}}) {
    for (const double time : {0.01, 0.04, 0.08, 0.16, 0.4}) {
      const SpringState expected = integrated(start, 1, time);
      const SpringState actual = spring.after(start, 1, time);
      EXPECT_NEAR(actual.position, expected.position, 1e-6) << time;
      EXPECT_NEAR(actual.velocity, expected.velocity, 1e-5) << time;
    }
  }
}

TEST(Spring, BeginsWhereItIs) {
  const SpringState start = {0.3, -2};
  const SpringState now = spring.after(start, 1, 0);
  EXPECT_NEAR(now.position, start.position, 1e-12);
  EXPECT_NEAR(now.velocity, start.velocity, 1e-12);
}

TEST(Spring, PassesItsTargetByLessThanAHundredthAndSettles) {
  double furthest = 0;
  for (int thousandths = 0; thousandths < 500; ++thousandths) {
    furthest = std::max(furthest, spring.after({}, 1, thousandths / 1000.0).position);
  }
  EXPECT_GT(furthest, 1.0);
  EXPECT_LT(furthest, 1.01);
  EXPECT_TRUE(hasSettled(spring.after({}, 1, 0.5), 1));
  EXPECT_FALSE(hasSettled(spring.after({}, 1, 0.05), 1));
}

TEST(SpringValue, GoesToItsTargetAndComesToRest) {
  SpringValue value;
  double lowest = 0;
  QObject::connect(&value, &SpringValue::valueChanged, &value, [&] { lowest = std::min(lowest, value.value()); });
  value.setTarget(1);
  EXPECT_EQ(value.state(), QAbstractAnimation::Running);
  ASSERT_TRUE(runUntil([&] { return value.state() == QAbstractAnimation::Stopped; }));
  EXPECT_EQ(value.value(), 1);
  EXPECT_EQ(lowest, 0);
}

TEST(SpringValue, TurnsBackFromWhereItIs) {
  SpringValue value;
  value.setTarget(1);
  ASSERT_TRUE(runUntil([&] { return value.value() > 0.3; }));
  const double turned = value.value();
  value.setTarget(0);
  EXPECT_NEAR(value.value(), turned, 1e-9);
  ASSERT_TRUE(runUntil([&] { return value.state() == QAbstractAnimation::Stopped; }));
  EXPECT_EQ(value.value(), 0);
}

}  // namespace
}  // namespace tilora::app
