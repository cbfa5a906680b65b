// A small desktop in the memory of an X server: a window manager, a panel with a taskbar and a tray, and real programs.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <list>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"

namespace tilora::tour {

/// Why the tour cannot go on, as a sentence for the user.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The user asked the tour to end.
class Interrupted : public std::exception {};

/// Makes SIGINT, SIGTERM and SIGHUP end the next wait with `Interrupted` instead of ending the process, so that everything is cleaned up.
void endWaitsOnSignals();

/// Programs that are started for the first time come from a cold disk, on a machine that may be busy with what was just installed.
inline constexpr std::chrono::seconds patience{60};

/// A program of the desktop with its one window.
struct Program {
  /// In a sentence: "the terminal".
  std::string name;
  /// The class in the WM_CLASS of its window, which no other program of the desktop has, and the window itself.
  std::string className;
  std::vector<std::string> command;
  std::optional<harness::ManagedProcess> process;
  xcb_window_t window = XCB_WINDOW_NONE;
};

/// Everything on it ends with it, and it has a home directory of its own: nothing of the real user's is read or changed.
class EmbeddedDesktop {
 public:
  /// Starts the server, the window manager and the panel.
  EmbeddedDesktop();

  harness::Display& display() { return display_; }
  harness::Session& session() { return session_; }
  harness::Keyboard& keyboard() { return keyboard_; }
  harness::PointerDevice& pointer() { return pointer_; }

  /// The monitor that is there from the beginning, and the one that can be added at its right.
  static constexpr harness::PixelRect firstMonitor = {0, 0, 1280, 800};
  static constexpr harness::PixelRect secondMonitor = {1280, 0, 960, 800};
  void addSecondMonitor();
  /// All that the monitors show.
  harness::PixelRect visibleArea();

  /// Starts a program and waits until its window is there and has the keyboard. The program stays at its address.
  Program& start(std::string name, std::string className, std::vector<std::string> command);
  /// Closes the active window, that of `program`, from the keyboard, and waits for the end of the program.
  void close(Program& program);
  /// Starts a program again that has ended.
  void startAgain(Program& program);
  /// Opens the window manager's list of windows with Alt+Tab, and lets Alt go: the next window in it becomes active, be it hidden.
  void pressAltTab();
  /// Clicks a program's button in the taskbar.
  void clickInTaskbar(const Program& program);
  /// In the order of the taskbar.
  const std::list<Program>& programs() const { return programs_; }

  /// Waits until Tilora has looked at the pointer once more, as every pass of it does; false when it does not in time.
  bool waitForPass();
  /// Waits until `holds`; false when it does not in time.
  bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline = patience);
  /// Writes a picture of the monitors, once the programs have stopped painting.
  void takePicture(const std::filesystem::path& file);

 private:
  /// No blinking cursor, no animations, short titles.
  void writeProgramSettings();
  void startPanel();
  void open(Program& program);
  /// How many of the root's children are shown.
  std::size_t shownCount();
  /// The active window when it is one of that class and shown, else none.
  xcb_window_t activeWindowOf(const std::string& className);

  harness::ServerProcess server_{2240, 800};
  harness::Session session_{server_.display()};
  harness::Display display_{server_.display()};
  harness::WireTap wireTap_{server_.display()};
  harness::Keyboard keyboard_{display_};
  harness::PointerDevice pointer_{display_};
  std::optional<harness::WindowManager> windowManager_;
  std::optional<harness::ManagedProcess> panel_;
  std::list<Program> programs_;
};

}  // namespace tilora::tour
