// Ends and starts: what Tilora hid is shown again at a clean end, found again after a crash, and one copy runs on a display.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class EndingTest : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    display.sendRootMessage(display.root(), "_NET_NUMBER_OF_DESKTOPS", {4});
  }

  std::uint32_t desktopOf(xcb_window_t window) {
    const std::vector<std::uint32_t> desktop = display.cardinals(window, "_NET_WM_DESKTOP");
    return desktop.empty() ? 99 : desktop.front();
  }

  xcb_window_t settings() {
    for (const xcb_window_t window : display.clientList()) {
      if (display.text(window, "_NET_WM_NAME") == "Tilora Settings") return window;
    }
    return XCB_WINDOW_NONE;
  }

  /// Two windows, of which Tilora, started here, shows the second on the whole screen and has hidden the first.
  struct TwoWindows {
    App& first;
    const App& second;
  };
  TwoWindows startWithOneHidden() {
    App& first = open("first");
    const App& second = open("second");
    startTilora();
    EXPECT_TRUE(isTiled(second.window, Place::full));
    EXPECT_TRUE(isHidden(first.window));
    return {first, second};
  }

  void endWindowManager(int signal) {
    windowManager->process().signal(signal);
    ASSERT_TRUE(windowManager->process().waitForEnd());
    windowManager.reset();
  }

  void endTilora(int signal) {
    tilora->signal(signal);
    const auto end = tilora->waitForEnd();
    ASSERT_TRUE(end);
    if (signal != SIGKILL) {
      ASSERT_EQ(end->status, 0);
    }
  }
};

TEST_P(EndingTest, EverythingIsShownAgainWithItsStackingAndFocusWhenTiloraIsAskedToEnd) {
  for (const int signal : {SIGTERM, SIGINT}) {
    const App& first = open("first");
    const App& second = open("second");
    const App& third = open("third");
    startTilora();
    EXPECT_TRUE(isTiled(third.window, Place::full));
    EXPECT_TRUE(isHidden(first.window));
    EXPECT_TRUE(isHidden(second.window));
    endTilora(signal);
    EXPECT_TRUE(isShown(first.window));
    EXPECT_TRUE(isShown(second.window));
    EXPECT_TRUE(isShown(third.window));
    EXPECT_TRUE(isActive(third.window));
    EXPECT_TRUE(comesTrue([&] { return display.stackingOrder().back() == third.window; }));
    EXPECT_FALSE(isMarked(first.window));
    EXPECT_FALSE(isMarked(second.window));
    apps.clear();
    ASSERT_TRUE(comesTrue([&] { return display.clientList().empty(); }));
  }
}

TEST_P(EndingTest, TheWindowsOfAnotherDesktopStayThereWhenTiloraEnds) {
  const App& hidden = open("hidden");
  const App& shown = open("shown");
  startTilora();
  EXPECT_TRUE(isTiled(shown.window, Place::full));
  EXPECT_TRUE(isHidden(hidden.window));
  display.showDesktop(1);
  ASSERT_TRUE(comesTrue([&] { return display.currentDesktop() == 1; }));
  const App& here = open("here");
  EXPECT_TRUE(isTiled(here.window, Place::full));
  endTilora(SIGTERM);
  EXPECT_TRUE(comesTrue([&] { return display.currentDesktop() == 1; }));
  EXPECT_TRUE(isActive(here.window));
  EXPECT_EQ(desktopOf(hidden.window), 0U);
  EXPECT_EQ(desktopOf(shown.window), 0U);
  EXPECT_EQ(desktopOf(here.window), 1U);
  display.showDesktop(0);
  EXPECT_TRUE(isShown(hidden.window));
  EXPECT_TRUE(isShown(shown.window));
}

TEST_P(EndingTest, WhatWasHiddenIsFoundAgainAfterACrash) {
  const TwoWindows two = startWithOneHidden();
  endTilora(SIGKILL);
  EXPECT_TRUE(isMarked(two.first.window));
  EXPECT_TRUE(display.iconic(two.first.window));
  startTilora();
  activate(two.first.window);
  EXPECT_TRUE(isTiled(two.first.window, Place::full));
  EXPECT_TRUE(isHidden(two.second.window));
  endTilora(SIGTERM);
  EXPECT_TRUE(isShown(two.first.window));
  EXPECT_TRUE(isShown(two.second.window));
}

TEST_P(EndingTest, WhatACrashedTiloraHidIsShownAtTheEndOfTheNextOne) {
  const TwoWindows two = startWithOneHidden();
  endTilora(SIGKILL);
  startTilora();
  endTilora(SIGINT);
  EXPECT_TRUE(isShown(two.first.window));
  EXPECT_TRUE(isShown(two.second.window));
  EXPECT_TRUE(isActive(two.second.window));
}

TEST_P(EndingTest, APartnerThatACrashHidComesBackBesideItsWindow) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  endTilora(SIGKILL);
  startTilora();
  activate(pair.right.window);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isHidden(third.window));
}

TEST_P(EndingTest, WhatIsHiddenIsShownByTheNextWindowManagerWhenTiloraEndsWithoutOne) {
  for (const int signal : {SIGKILL, SIGTERM}) {
    const TwoWindows two = startWithOneHidden();
    endWindowManager(signal);
    endTilora(SIGTERM);
    EXPECT_FALSE(isMarked(two.first.window));
    startWindowManager();
    EXPECT_TRUE(isShown(two.first.window));
    EXPECT_TRUE(isShown(two.second.window));
    apps.clear();
    ASSERT_TRUE(comesTrue([&] { return display.clientList().empty(); }));
  }
}

TEST_P(EndingTest, WhatIsHiddenIsShownByTheNextWindowManagerWhenOneDiesWhileTiloraEnds) {
  const TwoWindows two = startWithOneHidden();
  windowManager->process().signal(SIGSTOP);
  tilora->signal(SIGTERM);
  // It is asking the manager to show the window.
  ASSERT_TRUE(comesTrue([&] { return !isMarked(two.first.window); }));
  endWindowManager(SIGKILL);
  const auto end = tilora->waitForEnd();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->status, 0);
  startWindowManager();
  EXPECT_TRUE(isShown(two.first.window));
  EXPECT_TRUE(isShown(two.second.window));
}

TEST_P(EndingTest, AHiddenWindowThatItsProgramWithdrewStaysWithdrawnWhenTiloraEndsWithoutAWindowManager) {
  const TwoWindows two = startWithOneHidden();
  two.first.client.withdraw(two.first.window);
  ASSERT_TRUE(comesTrue([&] { return display.clientList() == std::vector{two.second.window}; }));
  endWindowManager(SIGKILL);
  endTilora(SIGTERM);
  startWindowManager();
  EXPECT_TRUE(isShown(two.second.window));
  // Fluxbox leaves a window that was withdrawn in IconicState, as if it were still in use.
  EXPECT_EQ(display.viewable(two.first.window), runsOn({WindowManagerKind::fluxbox}));
}

TEST_P(EndingTest, ASecondCopyEndsAtOnceAndTheFirstOneGoesOn) {
  constexpr std::uint8_t configureWindow = 12;
  WireTap stacking(server.display(), configureWindow);
  const App& app = open("app");
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  ManagedProcess second = runTilora();
  EXPECT_EQ(second.waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  EXPECT_TRUE(tilora->running());
  // The first one has opened its settings window for the second, and brings it to the front a few times.
  ASSERT_TRUE(comesTrue([&] { return settings() != XCB_WINDOW_NONE; }));
  EXPECT_TRUE(isActive(settings()));
  constexpr int raises = 3;
  EXPECT_TRUE(stacking.waitUntil([&] { return stacking.of(settings()).requests[configureWindow] >= raises; }));
  // The window manager may be behind.
  ASSERT_TRUE(passes());
  activate(app.window);
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(EndingTest, TiloraEndsWithTheServer) {
  open("app");
  startTilora();
  server.process().signal(SIGKILL);
  const auto end = tilora->waitForEnd();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->status, 1);
  tilora.reset();
}

INSTANTIATE_TEST_SUITE_P(On, EndingTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
