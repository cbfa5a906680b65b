// The trace of a replay: what the controller did, one JSON object a line.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "controller/change_notifier.h"
#include "controller/window_manager_controller.h"
#include "platform/simulated/effects.h"
#include "platform/simulated/virtual_clock.h"
#include "shortcuts/shortcut_recorder.h"

namespace tilora::replay {

/// Writes lines with the time of a clock. Numbers are written so that reading them gives the same double; one without a decimal form is
/// written as 1e999, -1e999 or null.
class Trace {
 public:
  /// Both must outlive the trace.
  Trace(std::ostream& out, const simulated::VirtualClock& clock) : out_(out), clock_(clock) {}

  void effect(const simulated::Effect& effect);
  void willChange(PublishedProperty property);
  /// The answer to a key press.
  void key(bool isSwallowed);
  /// The published values, the bookkeeping of the engine and the state of the recorder; members and entries sorted by name.
  void state(const WindowManagerController& controller, const ShortcutRecorder& recorder);

 private:
  /// Writes a line: the time, then `members`, which begin with a comma.
  void write(std::string_view members);

  std::ostream& out_;
  const simulated::VirtualClock& clock_;
};

}  // namespace tilora::replay
