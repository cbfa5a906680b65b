// What the measured keys bring about.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "figures/record.h"

namespace tilora::bench {

enum class Action {
  /// The active window goes to the other side of the screen; the other windows stay what they are.
  move,
  /// The two windows that are shown give way to the two of the exchanged sides.
  exchange,
  /// A window that was hidden is shown beside the active one.
  restore,
};

inline const std::string& nameOf(Action action) {
  switch (action) {
    case Action::move:
      return measure::move;
    case Action::exchange:
      return measure::exchange;
    case Action::restore:
      break;
  }
  return measure::restore;
}

/// Milliseconds to the first and to the last event of the windows concerned.
struct Sample {
  double first = 0;
  double last = 0;
};

}  // namespace tilora::bench
