// A user's session in a directory of its own, so that a test neither reads nor changes anything of the real user's.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "harness/process.h"

namespace tilora::harness {

/// The home directory, the XDG directories, the display and the message bus that the programs of one test see.
class Session {
 public:
  /// `display` names the X server, ":12" for instance.
  explicit Session(std::string display);

  const std::string& display() const { return display_; }
  const TemporaryDirectory& home() const { return home_; }
  /// The environment for a program of this session. Without a bus, the bus address leads nowhere.
  Environment environment() const;
  /// Puts Tilora's settings back to those of a user who changed none, and whose check for updates is not due: it asks no network. So they
  /// are at the beginning.
  void resetSettings() const;
  /// Starts the session's own message bus, once; later environments name it.
  void startBus();
  /// Starts a program of the session; its output goes to a log in the home directory.
  ManagedProcess start(std::vector<std::string> arguments, const Environment& additions = {});

 private:
  std::string display_;
  TemporaryDirectory home_;
  std::string busAddress_;
  std::optional<ManagedProcess> bus_;
  int logs_ = 0;
};

}  // namespace tilora::harness
