// The real program on a real desktop: what every test of it starts from.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/place.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"

namespace tilora::harness {

/// An application of the desktop: a process with one window to begin with.
struct App {
  TestClient client;
  xcb_window_t window = XCB_WINDOW_NONE;
};

/// A server with one monitor, a home directory and a window manager, all of its own. Tilora runs from `startTilora` on. Every wait ends
/// with an event; whatever is asked with `is...` is waited for.
class DesktopTest : public testing::TestWithParam<WindowManagerKind> {
 public:
  /// The request with which each pass begins.
  static constexpr std::uint8_t queryPointer = 38;
  static constexpr PixelRect wholeScreen = {0, 0, 1600, 900};

  DesktopTest() = default;
  /// On a server with outputs that can be plugged and unplugged.
  explicit DesktopTest(const std::vector<PixelRect>& outputs) : server(outputs) {}
  void SetUp() override { startWindowManager(); }
  void TearDown() override;

  void startWindowManager(WindowManagerOptions options = {});
  bool runsOn(std::initializer_list<WindowManagerKind> kinds) const;

  /// Lets Tilora find that the user agreed in an earlier run.
  void giveConsent() const;
  /// Starts Tilora with the user's consent, and returns when it has made its first pass.
  void startTilora(const Environment& additions = {});
  /// Starts the program without waiting for anything.
  ManagedProcess runTilora(const Environment& additions = {});
  /// Waits for one whole pass of Tilora, from its first question to its last request; `count` times.
  testing::AssertionResult passes(int count = 1);
  /// Any resource of Tilora's connection; none while it does not run.
  xcb_window_t tiloraResource();

  /// Starts an application and waits until its window is the active one. `name` becomes the title and the class.
  App& open(const std::string& name, WindowOptions options = {});
  /// A window more of an application, active.
  xcb_window_t openWindow(TestClient& client, const WindowOptions& options);
  struct Pair {
    App& left;
    App& right;
  };
  /// Opens two applications and gives them the halves of the screen; the right one is active. Tilora runs.
  Pair openPair();
  /// Activates a window as a taskbar does, and waits until the window manager has done so.
  void activate(xcb_window_t window);
  /// Presses the shortcut of a command.
  void press(Place place);

  /// The window is shown and has the frame of `place` on `monitor`.
  testing::AssertionResult isTiled(xcb_window_t window, Place place, const PixelRect& monitor = wholeScreen, const Steps& steps = {});
  testing::AssertionResult isShown(xcb_window_t window);
  testing::AssertionResult isHidden(xcb_window_t window);
  testing::AssertionResult isActive(xcb_window_t window);
  /// Whether Tilora has marked the window as hidden by it.
  bool isMarked(xcb_window_t window) { return display.hasProperty(window, "_TILORA_HIDDEN"); }
  /// Whether the window manager says that it knows a property or message.
  bool isSupported(const std::string& atom);
  /// Waits for any condition on the display.
  testing::AssertionResult comesTrue(const std::function<bool()>& holds);
  /// How many of the recorded events of a window are of `kind`.
  int count(xcb_window_t window, WindowEvent::Kind kind);
  /// Forgets the events recorded so far.
  void recordFromNow();
  /// How often the area of a window and its frame really changed since `recordFromNow`.
  int changesOfArea(xcb_window_t window);
  /// How often a key was pressed in the window of an application.
  static int typed(App& app, Key key);
  /// Whether a property of a window has changed since `recordFromNow`.
  bool hasChanged(xcb_window_t window, std::string_view property);

  ServerProcess server{wholeScreen.width, wholeScreen.height};
  Session session{server.display()};
  Display display{server.display()};
  WireTap tap{server.display(), queryPointer};
  Keyboard keyboard{display};
  PointerDevice pointer{display};
  std::optional<WindowManager> windowManager;
  std::list<App> apps;
  std::optional<ManagedProcess> tilora;
  /// The gap that `isTiled` expects.
  double gap = defaultGap;

  std::map<xcb_window_t, PixelRect> areas;

 private:
  testing::AssertionResult described(bool holds, const std::string& wanted);
};

/// How a test is named after its window manager.
inline std::string windowManagerOf(const testing::TestParamInfo<WindowManagerKind>& tested) { return nameOf(tested.param); }

}  // namespace tilora::harness
