// A desktop with its windows, and the stopwatch between a key and what follows from it.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "actions.h"
#include "harness/display.h"
#include "harness/input.h"
#include "harness/session.h"
#include "harness/test_client.h"

namespace tilora::bench {

/// Why a contestant cannot be measured.
class Failure : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A key with the modifiers that are held before it.
struct Chord {
  std::vector<harness::Key> held;
  harness::Key key = harness::Key::leftBracket;
};

/// Two chords that are pressed in turn: each brings back what the other left.
struct Turns {
  Chord there;
  Chord back;
  /// Whether the way back is the same action and counts.
  bool backCounts = true;
};

/// The session of one visit to one window manager, with its windows. Those that the keys move are each an application of its own; the
/// others belong to ten applications.
class Desk {
 public:
  /// `server` is the name of the server that `display` is connected to.
  Desk(const std::string& server, harness::Display& display) : display_(display), session_(server) {}

  /// How many windows there shall be, four or more.
  void setCrowd(std::size_t windows) { crowd_ = windows; }
  std::size_t crowd() const { return crowd_; }
  /// From now on programs are started by this one, which adds up what they and their children cost. `FILE PROGRAM ARGUMENT...` is what it
  /// takes.
  void setWard(std::filesystem::path ward) { ward_ = std::move(ward); }

  harness::Session& session() { return session_; }
  harness::Display& display() { return display_; }
  harness::Keyboard& keyboard() { return keyboard_; }

  /// Also looks at the frames around windows that are opened from now on: there are window managers that hide a window with its frame
  /// alone.
  void watchFrames() { watchesFrames_ = true; }

  /// Starts a program of the session.
  harness::ManagedProcess start(std::vector<std::string> arguments, const harness::Environment& additions = {});
  /// The files of all wards so far.
  const std::vector<std::filesystem::path>& costs() const { return costs_; }

  /// Opens a window and waits until it is shown.
  xcb_window_t open();
  /// Opens windows of the ten applications.
  void openOthers(std::size_t count);
  /// Opens windows until the whole crowd is there: the four that the keys move, then the others.
  void openCrowd();
  void closeAll();
  const std::vector<xcb_window_t>& windows() const { return windows_; }

  void press(const Chord& chord);
  /// How many windows the user sees something of.
  std::size_t shownWindows();
  /// Waits until just these windows are not iconic.
  void expectShown(const std::vector<xcb_window_t>& shown);
  /// Stops the time that `program` takes from here to the first window that it gives another place on the screen, and to the last event of
  /// a window. `meanwhile` is done again and again until there is such a window. Nothing when there never is.
  std::optional<Sample> measureStart(const std::function<void()>& program, const std::function<void()>& meanwhile = {});
  /// Waits until nothing happens any more.
  void waitUntilQuiet();
  /// Throws a Failure that names `what` when it does not come true.
  void expect(const std::string& what, const std::function<bool()>& holds);
  /// Waits until no client has a key of Alt and Shift with one of these: the server notices a while later that a program has ended.
  void expectFree(const std::vector<harness::Key>& keys);
  /// Presses `chord` until an event of the windows follows: a program that has just been started may not have its keys yet.
  void pressUntilItWorks(const Chord& chord, Action action);
  /// Presses a chord and stops the time of what follows; nothing when nothing does.
  std::optional<Sample> measure(const Chord& chord, Action action);

 private:
  using Clock = std::chrono::steady_clock;

  enum class Change { none, place, other };

  /// What an event shows changed of one of the windows; takes note of what it shows.
  Change changeOf(const harness::WindowEvent& event);
  bool isOnScreen(const harness::WindowEvent& event);
  void releaseModifiers(const Chord& chord);
  void prepareToWatch();
  /// Nothing is lost of what happens meanwhile.
  void pause(std::chrono::milliseconds length);

  void opened(const std::string& name, xcb_window_t window);

  harness::Display& display_;
  harness::Session session_;
  std::size_t crowd_ = 4;
  std::filesystem::path ward_;
  bool watchesFrames_ = false;
  harness::Keyboard keyboard_{display_};
  std::vector<std::unique_ptr<harness::TestClient>> clients_;
  std::vector<std::unique_ptr<harness::TestClient>> others_;
  std::vector<xcb_window_t> windows_;
  /// The geometry of each window as the server tells it (false, in its parent) and as the window manager does (true, on the root).
  std::map<std::pair<xcb_window_t, bool>, harness::PixelRect> told_;
  int opened_ = 0;
  std::vector<std::filesystem::path> costs_;
  /// The same pauses in each run.
  std::minstd_rand pauses_;
};

}  // namespace tilora::bench
