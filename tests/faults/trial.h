// One life of the program with one fault in it, and what has become of the windows and the settings after it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"

namespace tilora::faults {

struct Outcome {
  std::optional<harness::ProcessEnd> end;
  /// Whether it ended only when it was asked again.
  bool isAskedTwice = false;
  /// Whether a shortcut gave a window its place.
  bool tiled = false;
  /// Whether that place is in the settings at the end.
  bool placeIsStored = false;
  /// Everything that must not be, each in a sentence.
  std::vector<std::string> failures = {};
};

/// A desktop with three windows, on which one trial comes after the other.
class Trials {
 public:
  explicit Trials(std::filesystem::path program);

  harness::Session& session() { return session_; }
  const std::string& display() const { return server_.display(); }
  /// Starts the program with `additions` to its environment, lets it tile, hide and store, and ends it. What must hold: it ends by itself
  /// or by the request, never by a signal; each window can be brought back; after a clean end none is hidden or marked; the settings of
  /// before are in the file, or in one kept beside it.
  Outcome run(const harness::Environment& additions);

 private:
  static constexpr std::uint8_t queryPointer = 38;

  void reset();
  void live(harness::ManagedProcess& program, Outcome& outcome);
  void expectWindows(Outcome& outcome);
  void expectSettings(Outcome& outcome);
  bool comesBack(xcb_window_t window);

  std::filesystem::path program_;
  harness::ServerProcess server_;
  harness::Session session_{server_.display()};
  harness::Display display_{server_.display()};
  /// Of the request with which each pass begins.
  harness::WireTap tap_{server_.display(), queryPointer};
  harness::Keyboard keyboard_{display_};
  harness::WindowManager manager_{harness::WindowManagerKind::openbox, session_, display_};
  std::vector<harness::TestClient> clients_;
  std::vector<xcb_window_t> windows_;
};

}  // namespace tilora::faults
