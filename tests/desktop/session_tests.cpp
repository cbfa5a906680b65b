// The life of a session: virtual desktops, Show Desktop, window managers that come, go and are replaced.
#include <map>

#include "desktop_test.h"

namespace tilora::harness {
namespace {

class SessionTest : public DesktopTest {
 protected:
  void TearDown() override {
    DesktopTest::TearDown();
    if (HasFailure() && next) std::cout << next->describe() << std::endl;
  }

  void showDesktop(std::uint32_t desktop) {
    display.showDesktop(desktop);
    EXPECT_TRUE(comesTrue([&] { return display.currentDesktop() == desktop; }));
  }

  /// Puts another window manager in the place of the running one.
  void replaceWindowManager(WindowManagerKind kind) {
    // Fluxbox and JWM take no other's place, and leave theirs only when they end.
    const bool takesPlace = kind != WindowManagerKind::fluxbox && kind != WindowManagerKind::jwm &&
                            !runsOn({WindowManagerKind::fluxbox, WindowManagerKind::jwm});
    if (!takesPlace) windowManager.reset();
    next.emplace(kind, session, display, WindowManagerOptions{.replace = takesPlace});
  }

  /// Another one; for the five that every test run has, one of these.
  WindowManagerKind other() const {
    using enum WindowManagerKind;
    static const std::map<WindowManagerKind, WindowManagerKind> after = {{openbox, xfwm4}, {xfwm4, metacity}, {metacity, marco},
                                                                         {marco, icewm},   {icewm, openbox},  {fluxbox, jwm},
                                                                         {jwm, kwin},      {kwin, mutter},    {mutter, fluxbox}};
    return after.at(GetParam());
  }

  /// One window shown, the other hidden, and the window manager replaced by another copy of it after a crash.
  void outliveACrash(const App& hidden, const App& shown) {
    startTilora();
    EXPECT_TRUE(isTiled(shown.window, Place::full));
    EXPECT_TRUE(isHidden(hidden.window));
    windowManager->process().signal(SIGKILL);
    windowManager->process().waitForEnd();
    windowManager.reset();
    next.emplace(GetParam(), session, display);
    activate(shown.window);
    EXPECT_TRUE(isTiled(shown.window, Place::full));
    EXPECT_TRUE(isHidden(hidden.window));
  }

  std::optional<WindowManager> next;
};

class VirtualDesktopTest : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    display.sendRootMessage(display.root(), "_NET_NUMBER_OF_DESKTOPS", {4});
    ASSERT_TRUE(comesTrue([&] { return display.cardinals(display.root(), "_NET_NUMBER_OF_DESKTOPS") == std::vector<std::uint32_t>{4}; }));
  }
};

class ShowDesktopTest : public SessionTest {
 protected:
  void showTheDesktop(bool show) {
    display.sendRootMessage(display.root(), "_NET_SHOWING_DESKTOP", {show ? 1U : 0U});
    EXPECT_TRUE(
        comesTrue([&] { return display.cardinals(display.root(), "_NET_SHOWING_DESKTOP") == std::vector<std::uint32_t>{show ? 1U : 0U}; }));
  }
};

TEST_P(VirtualDesktopTest, EachDesktopKeepsWhatItShows) {
  startTilora();
  const Pair pair = openPair();
  showDesktop(1);
  const App& here = open("here");
  EXPECT_TRUE(isTiled(here.window, Place::full));
  ASSERT_TRUE(passes(2));
  EXPECT_FALSE(isMarked(pair.left.window));
  EXPECT_FALSE(isMarked(pair.right.window));
  press(Place::left);
  EXPECT_TRUE(isTiled(here.window, Place::left));
  showDesktop(0);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  ASSERT_TRUE(passes(2));
  EXPECT_FALSE(isMarked(here.window));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  showDesktop(1);
  EXPECT_TRUE(isTiled(here.window, Place::left));
}

TEST_P(VirtualDesktopTest, AHiddenWindowStaysOnItsDesktopAndComesBackThere) {
  const App& hidden = open("hidden");
  const App& shown = open("shown");
  startTilora();
  EXPECT_TRUE(isTiled(shown.window, Place::full));
  EXPECT_TRUE(isHidden(hidden.window));
  showDesktop(1);
  ASSERT_TRUE(passes(2));
  EXPECT_TRUE(display.iconic(hidden.window));
  EXPECT_EQ(display.cardinals(hidden.window, "_NET_WM_DESKTOP"), std::vector<std::uint32_t>{0});
  showDesktop(0);
  EXPECT_TRUE(isTiled(shown.window, Place::full));
  EXPECT_TRUE(display.iconic(hidden.window));
  activate(hidden.window);
  EXPECT_TRUE(isTiled(hidden.window, Place::full));
  EXPECT_TRUE(isHidden(shown.window));
}

TEST_P(ShowDesktopTest, NothingComesBackWhileTheDesktopIsShown) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  ASSERT_TRUE(passes());
  showTheDesktop(true);
  recordFromNow();
  ASSERT_TRUE(passes(3));
  for (const xcb_window_t window : {pair.left.window, pair.right.window, third.window}) {
    EXPECT_EQ(count(window, WindowEvent::Kind::mapped), 0);
  }
  EXPECT_EQ(display.cardinals(display.root(), "_NET_SHOWING_DESKTOP"), std::vector<std::uint32_t>{1});
  showTheDesktop(false);
  EXPECT_TRUE(isTiled(third.window, Place::full));
  activate(third.window);
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isHidden(pair.right.window));
}

TEST_P(SessionTest, AStaleShowDesktopIsNotBelievedWhileAWindowIsInUse) {
  startTilora();
  const App& app = open("app");
  EXPECT_TRUE(isTiled(app.window, Place::full));
  display.setCardinals(display.root(), "_NET_SHOWING_DESKTOP", "CARDINAL", {1});
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(SessionTest, TheWindowsStayTiledWhenTheWindowManagerIsReplacedByItself) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  replaceWindowManager(GetParam());
  // Some give the focus to another window when they start.
  activate(third.window);
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isHidden(pair.right.window));
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
}

TEST_P(SessionTest, TheWindowsStayTiledWhenAnotherWindowManagerTakesOver) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  replaceWindowManager(other());
  activate(third.window);
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isHidden(pair.right.window));
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
  // The partner that came back had the focus for a moment.
  EXPECT_TRUE(isActive(pair.left.window));
  press(Place::full);
  EXPECT_TRUE(isTiled(pair.left.window, Place::full));
}

TEST_P(SessionTest, TiloraGoesOnWhenTheWindowManagerCrashes) {
  const App& first = open("first");
  const App& second = open("second");
  outliveACrash(first, second);
  activate(first.window);
  EXPECT_TRUE(isTiled(first.window, Place::full));
  EXPECT_TRUE(isHidden(second.window));
}

TEST_P(SessionTest, WhatWasHiddenWhenTheWindowManagerCrashedIsShownWhenTiloraEnds) {
  const App& first = open("first");
  const App& second = open("second");
  outliveACrash(first, second);
  tilora->signal(SIGTERM);
  ASSERT_TRUE(tilora->waitForEnd());
  EXPECT_TRUE(isShown(first.window));
  EXPECT_TRUE(isShown(second.window));
}

/// Without a window manager to begin with.
class EarlyStartTest : public DesktopTest {
 protected:
  void SetUp() override {}
};

TEST_P(EarlyStartTest, TiloraThatIsStartedBeforeTheWindowManagerWaitsForIt) {
  giveConsent();
  tilora.emplace(runTilora());
  ASSERT_TRUE(comesTrue([&] { return tiloraResource() != XCB_WINDOW_NONE; }));
  startWindowManager();
  const App& first = open("first");
  const App& second = open("second");
  EXPECT_TRUE(isTiled(second.window, Place::full));
  EXPECT_TRUE(isHidden(first.window));
  press(Place::right);
  EXPECT_TRUE(isTiled(second.window, Place::right));
}

INSTANTIATE_TEST_SUITE_P(On, SessionTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, VirtualDesktopTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
// Fluxbox has no Show Desktop.
INSTANTIATE_TEST_SUITE_P(On, ShowDesktopTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::metacity,
                                         WindowManagerKind::marco, WindowManagerKind::icewm, WindowManagerKind::jwm,
                                         WindowManagerKind::kwin, WindowManagerKind::mutter),
                         windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, EarlyStartTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
