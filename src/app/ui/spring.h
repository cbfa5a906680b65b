// The motion of a spring, in closed form.
#pragma once

namespace tilora::app {

/// Where something on a spring is, and how fast it moves, in units a second.
struct SpringState {
  double position = 0;
  double velocity = 0;

  bool operator==(const SpringState&) const = default;
};

/// A spring of mass 1, stiffness (2π / response)² and damping 4π · dampingFraction / response.
struct Spring {
  /// The period of the undamped spring in seconds, above 0.
  double response = 0.16;
  /// Above 0 and below 1: the spring passes its target a little before it settles.
  double dampingFraction = 0.85;

  /// The state `seconds` after it was let go in `start`, on its way to rest at `target`.
  SpringState after(const SpringState& start, double target, double seconds) const;
};

/// Whether nobody can see any more that it moves, when 1 is the whole way.
bool hasSettled(const SpringState& state, double target);

}  // namespace tilora::app
