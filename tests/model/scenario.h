// What happens on a random desktop, step by step, told so that any step can be left out.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "platform/simulated/simulated_desktop.h"

namespace tilora::model {

enum class StepKind : std::uint8_t {
  setScreen,
  removeScreen,
  setMainScreen,
  launch,
  quit,
  setApplicationHidden,
  setWindowsUnreadable,
  open,
  close,
  changeWindow,
  focus,
  focusNothing,
  setButtons,
  setTrust,
  setBoxing,
  setPadding,
  restart,
  pass,
  command,
};

/// One thing that happens. What it is exactly follows from `seed`; a step that names something that is not there does nothing.
struct Step {
  StepKind kind = StepKind::pass;
  ProcessId pid = 0;
  /// A window's id; a screen's id in the steps about screens.
  std::uint64_t id = 0;
  std::uint64_t seed = 0;
};

inline constexpr ProcessId ownPid = 1;

/// A story of about `length` steps that begins with screens, applications and windows, all decided by `seed`.
std::vector<Step> randomScenario(std::uint64_t seed, std::size_t length);

/// Makes the step happen on a desktop; nothing for those that are addressed to the program: padding, restart, pass, command.
void happen(const Step& step, simulated::SimulatedDesktop& desktop);

/// What the steps to the program carry: a gap in points, the stored form of a placement.
double paddingOf(const Step& step);
std::string placementOf(const Step& step);
/// What a user may have stored before: placements under keys of all three forms.
std::string storedPreferences(std::uint64_t seed);

/// One line for a person.
std::ostream& operator<<(std::ostream& out, const Step& step);

}  // namespace tilora::model
