// Those whose keys are measured.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "desk.h"
#include "harness/window_manager.h"

namespace tilora::latency {

/// A program that puts windows in their places on a key, running on a desk.
class Contestant {
 public:
  virtual ~Contestant() = default;

  /// Brings four windows to where the action begins. The keys that it answers with have worked once.
  virtual Turns prepare(Action action) = 0;
  /// The milliseconds that each key press since the last call took inside the program; empty where that is not measured.
  virtual std::vector<double> takeOwnShare() { return {}; }
};

/// Tilora over a window manager that runs. Ends with this object, and shows what it hid. The module that measures its own share is
/// beside the program.
std::unique_ptr<Contestant> startTilora(Desk& desk, const std::filesystem::path& program);

/// A client that sends, on the same keys, the requests that have to be sent, and does nothing else: nobody on this window manager can be
/// faster.
std::unique_ptr<Contestant> startFloor(Desk& desk, const std::filesystem::path& program);

/// A window manager that tiles by itself, with settings that bind the same keys.
struct Tiler {
  const char* name;
  std::unique_ptr<Contestant> (*start)(Desk& desk);
};

const std::vector<Tiler>& tilers();

/// The names of all contestants in the order of the tables.
std::vector<std::string> contestantNames();

std::string tiloraOn(harness::WindowManagerKind kind);
std::string floorOn(harness::WindowManagerKind kind);

}  // namespace tilora::latency
