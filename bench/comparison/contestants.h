// Those that are measured.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "actions.h"
#include "desk.h"
#include "harness/window_manager.h"

namespace tilora::bench {

/// A program that puts windows in their places on a key, running on a desk.
class Contestant {
 public:
  virtual ~Contestant() = default;

  /// Brings the windows to where the action begins. The keys that it answers with have worked once.
  virtual Turns prepare(Action action) = 0;
  /// The milliseconds that each key press since the last call took inside the program; empty where that is not measured.
  virtual std::vector<double> takeOwnShare() { return {}; }
  /// The processes that were started for it, not what they have started in turn.
  virtual std::vector<pid_t> processes() const = 0;
};

/// Tilora over a window manager that runs. Ends with this object, and shows what it hid. With `share`, it has a module in it that measures
/// its own share, which is beside the program.
std::unique_ptr<Contestant> startTilora(Desk& desk, const std::filesystem::path& program, bool share);

/// A client that sends, on the same keys, the requests that have to be sent, and does nothing else: nobody on this window manager can be
/// faster.
std::unique_ptr<Contestant> startFloor(Desk& desk, const std::filesystem::path& program);

/// Commands on keys over a window manager that runs, by its name in the tables.
std::unique_ptr<Contestant> startScript(Desk& desk, const std::string& name);

/// Its daemon of keys, and nothing waited for.
harness::ManagedProcess startKeyDaemon(Desk& desk, const std::string& name);

/// A window manager that tiles by itself, with settings that bind the same keys, on a desk without one.
std::unique_ptr<Contestant> startTiler(Desk& desk, const std::string& name);
/// Its programs, and nothing waited for.
std::vector<harness::ManagedProcess> startPrograms(Desk& desk, const std::string& name);

}  // namespace tilora::bench
