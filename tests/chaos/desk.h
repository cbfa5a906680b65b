// One desktop for a number of storms: a server whose monitors can be unplugged, a window manager, and Tilora.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "counts.h"
#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"

namespace tilora::chaos {

/// What a process holds.
struct Holdings {
  /// All that is in memory, and what of it belongs to no file.
  std::size_t residentKilobytes = 0;
  std::size_t ownKilobytes = 0;
  std::size_t descriptors = 0;
};

class Desk {
 public:
  /// Starts the server, with two monitors, and the window manager; throws std::runtime_error when they do not start. `program` is Tilora.
  Desk(harness::WindowManagerKind kind, std::filesystem::path program, Counts& counts);

  harness::Session& session() { return session_; }
  harness::Display& display() { return display_; }
  harness::Keyboard& keyboard() { return keyboard_; }
  harness::PointerDevice& pointer() { return pointer_; }

  bool serverRuns() { return server_.process().running(); }
  /// Throws std::runtime_error when the X server has ended: nothing else can be told then.
  void expectServerRuns();
  /// Whether the X server has ended, or does so within some seconds: one that crashes drops its connections before that.
  bool serverEnds() { return server_.process().waitForEnd(std::chrono::seconds(5)).has_value(); }
  /// How the X server has ended and what it has said, for a finding.
  std::string describeServer();
  /// Plugs the second monitor in, or out.
  void changeMonitors();

  harness::WindowManagerKind windowManager() const { return kind_; }
  void replaceWindowManager(harness::WindowManagerKind kind);
  void killWindowManager();
  bool managerRuns() const { return manager_ && manager_->process().running(); }
  /// Notes when the window manager has ended by itself, and starts it unless it runs; it may fail to start.
  void ensureWindowManager();
  /// In words, for a finding.
  std::string describeManager();
  /// For one that stands still.
  void restartWindowManager();

  /// Starts Tilora, with its user's consent, unless it runs.
  void startTilora();
  void killTilora();
  /// Ends Tilora as a session does, and says in the faults when it does not end well.
  void endTilora();
  bool tiloraRuns() const { return tilora_.has_value(); }
  /// Waits until Tilora, if it runs, has made a pass that began after this call; false when the deadline passes first.
  bool makesAPass(std::chrono::milliseconds deadline);
  /// Notes as a fault that Tilora has ended by itself, if it has.
  void expectTiloraRuns();
  /// For an X server that has ended by itself.
  void expectTiloraEndedWithTheServer();
  /// Notes as faults what Tilora has printed: a sanitizer's report, an X error, anything.
  void expectTiloraIsSilent();
  /// Counts the errors that the X server has sent to Tilora, and notes as faults those that are not of a window that has gone.
  void expectNoUnexpectedErrors();
  /// Nothing while Tilora does not run.
  std::optional<Holdings> tiloraHoldings() const;
  /// How often Tilora has been started.
  int tiloraLives() const { return lives_; }

  /// The remembered places by the key of the window; nothing when the settings cannot be decoded.
  std::optional<std::map<std::string, std::string>> storedPlacements() const;

  /// Notes a fault; throws std::runtime_error instead when the X server has ended or is about to, which explains nearly everything.
  void fault(const std::string& what);

 private:
  /// The request with which each pass begins.
  static constexpr std::uint8_t queryPointer = 38;

  void startWindowManager();
  void note(const std::string& what);
  /// Waits a while for `holds` to answer true, asked whenever the server has told more, which it does when it has something to answer as
  /// well. What it had sent before this call, it has told then.
  void awaitTold(const std::function<bool()>& holds);

  Counts& counts_;
  std::filesystem::path program_;
  harness::ServerProcess server_;
  harness::Session session_{server_.display()};
  harness::Display display_{server_.display()};
  harness::WireTap tap_{server_.display(), queryPointer};
  harness::Keyboard keyboard_{display_};
  harness::PointerDevice pointer_{display_};
  harness::WindowManagerKind kind_;
  std::unique_ptr<harness::WindowManager> manager_;
  std::optional<harness::ManagedProcess> tilora_;
  /// Something that Tilora's own connection has made, which of the connections with its numbers that is, and how many of the errors sent to
  /// it have been looked at.
  xcb_window_t tiloraResource_ = XCB_WINDOW_NONE;
  int tiloraConnection_ = 0;
  std::size_t errorsSeen_ = 0;
  int lives_ = 0;
  bool hasSecondMonitor_ = true;
};

}  // namespace tilora::chaos
