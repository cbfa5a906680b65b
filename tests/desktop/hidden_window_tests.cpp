// Hidden windows: how the user reaches them, where the focus and the keys go meanwhile, and what must not be touched.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class HiddenWindowTest : public DesktopTest {
 protected:
  /// A pair of which Tilora wants to hide the left one, which the window manager does not do before Tilora has given up waiting. It stands
  /// still when this returns.
  Pair hideWhileTheWindowManagerIsBusy() {
    const Pair pair = openPair();
    windowManager->process().signal(SIGSTOP);
    press(Place::full);
    EXPECT_TRUE(comesTrue([&] { return isMarked(pair.left.window); }));
    // It looks after one to two seconds, and again a second later; four passes make one.
    EXPECT_TRUE(passes(13));
    return pair;
  }
};

TEST_P(HiddenWindowTest, ATaskbarBringsAHiddenWindowBack) {
  const App& first = open("first");
  const App& second = open("second");
  startTilora();
  EXPECT_TRUE(isHidden(first.window));
  EXPECT_TRUE(isMarked(first.window));
  activate(first.window);
  EXPECT_TRUE(isTiled(first.window, Place::full));
  EXPECT_TRUE(isHidden(second.window));
  EXPECT_TRUE(isActive(first.window));
  EXPECT_FALSE(isMarked(first.window));
}

TEST_P(HiddenWindowTest, AltTabBringsAHiddenWindowBack) {
  const App& first = open("first");
  const App& second = open("second");
  startTilora();
  EXPECT_TRUE(isTiled(second.window, Place::full));
  EXPECT_TRUE(isHidden(first.window));
  const int shown = display.shownOnRoot();
  keyboard.press(Key::leftAlt);
  keyboard.tap(Key::tab);
  // Openbox misses a release that comes before its list of windows.
  if (GetParam() == WindowManagerKind::openbox) {
    EXPECT_TRUE(comesTrue([&] { return display.shownOnRoot() > shown; }));
  }
  keyboard.release(Key::leftAlt);
  EXPECT_TRUE(isTiled(first.window, Place::full));
  EXPECT_TRUE(isHidden(second.window));
  EXPECT_TRUE(isActive(first.window));
}

TEST_P(HiddenWindowTest, AProgramThatMapsItsHiddenWindowGetsItBack) {
  App& first = open("first");
  const App& second = open("second");
  startTilora();
  EXPECT_TRUE(isHidden(first.window));
  // What a program does when it is started a second time: it asks for its window to be active.
  first.client.map(first.window);
  display.sendRootMessage(first.window, "_NET_ACTIVE_WINDOW", {2, display.serverTime(), 0});
  EXPECT_TRUE(isTiled(first.window, Place::full));
  EXPECT_TRUE(isHidden(second.window));
}

TEST_P(HiddenWindowTest, AWindowThatTheUserMinimisedStaysMinimised) {
  startTilora();
  const Pair pair = openPair();
  display.minimise(pair.right.window);
  EXPECT_TRUE(isHidden(pair.right.window));
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  ASSERT_TRUE(passes(2));
  EXPECT_TRUE(display.iconic(pair.right.window));
  EXPECT_FALSE(isMarked(pair.right.window));
  tilora->signal(SIGTERM);
  ASSERT_TRUE(tilora->waitForEnd());
  EXPECT_TRUE(display.iconic(pair.right.window));
}

TEST_P(HiddenWindowTest, AClosedWindowIsFollowedByTheOneUsedBefore) {
  open("first");
  const App& second = open("second");
  App& third = open("third");
  startTilora();
  EXPECT_TRUE(isTiled(third.window, Place::full));
  activate(apps.front().window);
  EXPECT_TRUE(isTiled(apps.front().window, Place::full));
  activate(second.window);
  EXPECT_TRUE(isTiled(second.window, Place::full));
  activate(third.window);
  EXPECT_TRUE(isTiled(third.window, Place::full));
  third.client.destroy(third.window);
  EXPECT_TRUE(isTiled(second.window, Place::full));
  EXPECT_TRUE(isHidden(apps.front().window));
}

TEST_P(HiddenWindowTest, KeysTypedWhileAPairComesBackReachTheChosenWindowOnly) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isHidden(pair.right.window));
  ASSERT_TRUE(passes());
  activate(pair.left.window);
  int sent = 0;
  const auto type = [&] {
    keyboard.tap(Key::x);
    ++sent;
    return display.viewable(pair.right.window) && !display.iconic(pair.right.window) && display.iconic(third.window);
  };
  EXPECT_TRUE(comesTrue(type));
  for (int more = 0; more < 10; ++more) type();
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isActive(pair.left.window));
  EXPECT_TRUE(comesTrue([&] { return typed(pair.left, Key::x) == sent; }));
  EXPECT_EQ(typed(pair.right, Key::x), 0);
}

TEST_P(HiddenWindowTest, KeysTypedAfterACommandReachTheActiveWindowOnly) {
  startTilora();
  const Pair pair = openPair();
  press(Place::left);
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isTiled(pair.right.window, Place::left));
  ASSERT_TRUE(passes());
  press(Place::right);
  for (int sent = 0; sent < 20; ++sent) keyboard.tap(Key::x);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(comesTrue([&] { return typed(pair.right, Key::x) == 20; }));
  EXPECT_EQ(typed(pair.left, Key::x), 0);
  EXPECT_TRUE(isActive(pair.right.window));
}

TEST_P(HiddenWindowTest, NothingFlickersWhenAPairComesBack) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isHidden(pair.right.window));
  ASSERT_TRUE(passes());
  recordFromNow();
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
  ASSERT_TRUE(passes());
  for (const xcb_window_t shown : {pair.left.window, pair.right.window}) {
    EXPECT_LE(count(shown, WindowEvent::Kind::mapped), 1);
    EXPECT_EQ(count(shown, WindowEvent::Kind::unmapped), 0);
    EXPECT_LE(changesOfArea(shown), 1);
  }
  EXPECT_EQ(count(third.window, WindowEvent::Kind::mapped), 0);
  EXPECT_LE(count(third.window, WindowEvent::Kind::unmapped), 1);
}

TEST_P(HiddenWindowTest, NothingFlickersWhenAPairIsExchanged) {
  startTilora();
  const Pair pair = openPair();
  press(Place::left);
  EXPECT_TRUE(isTiled(pair.right.window, Place::left));
  EXPECT_TRUE(isHidden(pair.left.window));
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isHidden(pair.right.window));
  ASSERT_TRUE(passes());
  recordFromNow();
  press(Place::right);
  EXPECT_TRUE(isTiled(pair.left.window, Place::right));
  EXPECT_TRUE(isTiled(pair.right.window, Place::left));
  ASSERT_TRUE(passes());
  EXPECT_EQ(count(pair.left.window, WindowEvent::Kind::unmapped), 0);
  EXPECT_EQ(count(pair.left.window, WindowEvent::Kind::mapped), 0);
  EXPECT_EQ(changesOfArea(pair.left.window), 1);
  EXPECT_LE(count(pair.right.window, WindowEvent::Kind::mapped), 1);
  EXPECT_EQ(count(pair.right.window, WindowEvent::Kind::unmapped), 0);
  EXPECT_LE(changesOfArea(pair.right.window), 1);
}

TEST_P(HiddenWindowTest, ABusyWindowManagerShowsInTheEndWhatTheLastCommandShows) {
  startTilora();
  const Pair pair = openPair();
  windowManager->process().signal(SIGSTOP);
  press(Place::left);
  press(Place::right);
  ASSERT_TRUE(passes());
  windowManager->process().signal(SIGCONT);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  ASSERT_TRUE(passes(3));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_FALSE(isMarked(pair.left.window));
  EXPECT_TRUE(isActive(pair.right.window));
}

TEST_P(HiddenWindowTest, AWindowThatIsChosenWhileItIsBeingHiddenComesBackActiveWithItsPartner) {
  startTilora();
  const Pair pair = openPair();
  const App& third = open("third");
  EXPECT_TRUE(isHidden(pair.left.window));
  activate(pair.left.window);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
  ASSERT_TRUE(passes(2));
  tilora->signal(SIGSTOP);
  display.activate(third.window);
  EXPECT_TRUE(isActive(third.window));
  windowManager->process().signal(SIGSTOP);
  tilora->signal(SIGCONT);
  EXPECT_TRUE(comesTrue([&] { return isMarked(pair.left.window) && isMarked(pair.right.window); }));
  // It hides both, and then shows the left one, before Tilora looks again.
  tilora->signal(SIGSTOP);
  display.activate(pair.left.window);
  windowManager->process().signal(SIGCONT);
  EXPECT_TRUE(isActive(pair.left.window));
  tilora->signal(SIGCONT);
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
  EXPECT_TRUE(isActive(pair.left.window));
  press(Place::full);
  EXPECT_TRUE(isTiled(pair.left.window, Place::full));
  EXPECT_TRUE(isHidden(pair.right.window));
}

TEST_P(HiddenWindowTest, AWindowThatABusyWindowManagerHidesLateComesBack) {
  startTilora();
  const Pair pair = hideWhileTheWindowManagerIsBusy();
  windowManager->process().signal(SIGCONT);
  EXPECT_TRUE(isHidden(pair.left.window));
  EXPECT_TRUE(isTiled(pair.right.window, Place::full));
  EXPECT_TRUE(comesTrue([&] { return isMarked(pair.left.window); }));
  press(Place::right);
  EXPECT_TRUE(isTiled(pair.right.window, Place::right));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
}

TEST_P(HiddenWindowTest, AWindowThatABusyWindowManagerHidesLateIsShownWhenTiloraHasEndedBefore) {
  startTilora();
  const Pair pair = hideWhileTheWindowManagerIsBusy();
  tilora->signal(SIGTERM);
  ASSERT_TRUE(tilora->waitForEnd());
  windowManager->process().signal(SIGCONT);
  // By the time it takes a new window it has dealt with what was asked before.
  open("later");
  EXPECT_TRUE(isShown(pair.left.window));
  EXPECT_TRUE(isShown(pair.right.window));
}

INSTANTIATE_TEST_SUITE_P(On, HiddenWindowTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
