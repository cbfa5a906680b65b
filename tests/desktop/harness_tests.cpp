// The harness against each window manager: what it reports is what the window manager did.
#include <gtest/gtest.h>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"

namespace tilora::harness {
namespace {

class HarnessTest : public testing::TestWithParam<WindowManagerKind> {
 public:
  ServerProcess server;
  Session session{server.display()};
  Display display{server.display()};
  WindowManager windowManager{GetParam(), session, display};

  xcb_window_t shown(TestClient& client, const WindowOptions& options = {}) {
    const xcb_window_t window = client.open(options);
    display.watch(window);
    EXPECT_TRUE(display.waitUntil([&] { return display.viewable(window) && display.activeWindow() == window; })) << display.describe();
    return window;
  }
};

TEST_P(HarnessTest, ANewWindowIsListedAndGetsTheKeyboard) {
  TestClient client(session);
  const xcb_window_t window = shown(client);
  EXPECT_EQ(display.clientList(), std::vector<xcb_window_t>{window});
  Keyboard keyboard(display);
  keyboard.tap(Key::a);
  EXPECT_TRUE(display.waitUntil([&] { return !client.keysPressed(window).empty(); }));
  EXPECT_EQ(client.keysPressed(window), std::vector<int>{38});
}

TEST_P(HarnessTest, TheFrameIsTheOneThatTheWindowManagerDrew) {
  TestClient client(session);
  const xcb_window_t window = shown(client);
  // Marco and Mutter surround a frame with an invisible border to grab it by.
  const bool invisibleBorder = GetParam() == WindowManagerKind::marco || GetParam() == WindowManagerKind::mutter;
  const auto drawn = [&] {
    return invisibleBorder ? display.outermostArea(window)->contains(*display.frame(window))
                           : display.outermostArea(window) == display.frame(window);
  };
  EXPECT_TRUE(display.waitUntil(drawn)) << *display.frame(window) << " but drawn " << *display.outermostArea(window);
}

TEST_P(HarnessTest, AnIconicWindowIsUnmappedAndATaskbarBringsItBack) {
  TestClient client(session);
  const xcb_window_t window = shown(client);
  display.minimise(window);
  // Mutter composites what is not hidden and leaves every window mapped.
  const bool staysMapped = GetParam() == WindowManagerKind::mutter;
  EXPECT_TRUE(display.waitUntil([&] { return display.iconic(window) && display.viewable(window) == staysMapped; })) << display.describe();
  display.activate(window);
  EXPECT_TRUE(display.waitUntil([&] { return !display.iconic(window) && display.viewable(window) && display.activeWindow() == window; }))
      << display.describe();
}

TEST_P(HarnessTest, MonitorsAreTheOnesThatWereSet) {
  const std::vector<Monitor> wanted = {{"one", {0, 0, 900, 900}, true}, {"two", {900, 0, 700, 900}, false}};
  display.setMonitors(wanted);
  EXPECT_EQ(display.monitors(), wanted);
}

INSTANTIATE_TEST_SUITE_P(On, HarnessTest, testing::ValuesIn(allWindowManagers), [](const auto& tested) { return nameOf(tested.param); });

}  // namespace
}  // namespace tilora::harness
