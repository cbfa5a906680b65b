// A desktop of its own for each program that is measured.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "contestants.h"
#include "desk.h"
#include "harness/server.h"
#include "harness/window_manager.h"

namespace tilora::bench {

/// What is looked at besides the windows.
enum class Probe { ownShare, cost };

/// One program over its windows, on a server that no other program was on: a window manager may leave things behind that slow down whatever
/// comes after it (JWM does, by five milliseconds a move), and programs that have one each can be measured in turn, press by press.
class Stage {
 public:
  /// Starts what the program runs on, its windows and the program, by its name in the tables. Throws when one of them does not start.
  Stage(const std::string& program, int crowd, Probe probe);

  Desk& desk() { return desk_; }
  const Desk& desk() const { return desk_; }
  Contestant& contestant() { return *contestant_; }
  const Contestant& contestant() const { return *contestant_; }
  pid_t server() { return server_.process().pid(); }

 private:
  harness::ServerProcess server_;
  harness::Display display_{server_.display()};
  Desk desk_{server_.display(), display_};
  std::optional<harness::WindowManager> host_;
  std::unique_ptr<Contestant> contestant_;
};

}  // namespace tilora::bench
