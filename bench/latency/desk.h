// A desktop with four windows, and the stopwatch between a key and what follows from it.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "samples.h"

namespace tilora::latency {

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

/// The session of one visit to one window manager, with its windows, each an application of its own.
class Desk {
 public:
  /// `server` is the name of the server that `display` is connected to.
  Desk(const std::string& server, harness::Display& display) : display_(display), session_(server) {}

  harness::Session& session() { return session_; }
  harness::Display& display() { return display_; }
  harness::Keyboard& keyboard() { return keyboard_; }

  /// Opens a window and waits until it is shown.
  xcb_window_t open();
  void closeAll();
  const std::vector<xcb_window_t>& windows() const { return windows_; }

  void press(const Chord& chord);
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

  /// Whether an event shows one of the windows changed; takes note of what it shows.
  bool isChange(const harness::WindowEvent& event, Action action);
  void releaseModifiers(const Chord& chord);
  void prepareToWatch();
  /// Waits for a time that differs from one press to the next.
  void pause();

  harness::Display& display_;
  harness::Session session_;
  harness::Keyboard keyboard_{display_};
  std::vector<std::unique_ptr<harness::TestClient>> clients_;
  std::vector<xcb_window_t> windows_;
  /// The geometry of each window as the server tells it (false, in its parent) and as the window manager does (true, on the root).
  std::map<std::pair<xcb_window_t, bool>, harness::PixelRect> told_;
  int opened_ = 0;
  /// The same pauses in each run.
  std::minstd_rand pauses_;
};

}  // namespace tilora::latency
