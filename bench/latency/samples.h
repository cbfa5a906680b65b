// What was measured, and the table that is made of it.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tilora::latency {

/// What a key press brings about.
enum class Action {
  /// The active window goes to the other side of the screen; the other windows stay what they are.
  move,
  /// The two windows that are shown give way to the two of the exchanged sides.
  exchange,
  /// A window that was hidden is shown beside the active one.
  restore,
};

inline constexpr std::array actions = {Action::move, Action::exchange, Action::restore};

const char* nameOf(Action action);

/// Milliseconds from the key press to the first and to the last event of the windows concerned.
struct Sample {
  double first = 0;
  double last = 0;
};

struct Samples {
  std::vector<Sample> all;
  /// Presses that nothing followed.
  int missed = 0;
  /// Milliseconds from reading the key press to writing the last request that follows from it, inside the program itself.
  std::vector<double> ownShare;
};

/// By the name of the contestant.
using Results = std::map<Action, std::map<std::string, Samples>>;

/// The value below which `share` of the sorted values lie (the nearest rank). The list may not be empty.
double quantile(std::vector<double> values, double share);

/// One table for each action, as Markdown, in the order of `names`. A name "Tilora on x" is compared with "bare client on x".
std::string tables(const Results& results, const std::vector<std::string>& names);

}  // namespace tilora::latency
