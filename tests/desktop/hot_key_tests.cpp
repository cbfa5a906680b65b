// Shortcuts on real keyboards: by place on every layout, with the lock keys, across changes of the layout, beside other programs.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class HotKeyTest : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    app = &open("app");
    startTilora();
    EXPECT_TRUE(isTiled(app->window, Place::full));
  }

  void setLayout(std::vector<std::string> layout) {
    layout.insert(layout.begin(), {"setxkbmap", "-display", server.display(), "-layout"});
    ManagedProcess process = session.start(layout);
    ASSERT_EQ(process.waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  }

  void eachShortcutWorks() {
    for (const Place place : {Place::left, Place::right, Place::floating, Place::full}) {
      press(place);
      EXPECT_TRUE(isTiled(app->window, place));
    }
  }

  App* app = nullptr;
};

TEST_P(HotKeyTest, ShortcutsAreByPlaceOnEveryLayout) {
  for (const std::string layout : {"de", "ru", "fr", "us(dvorak)", "us"}) {
    setLayout({layout});
    ASSERT_TRUE(passes());
    SCOPED_TRACE(layout);
    eachShortcutWorks();
  }
}

TEST_P(HotKeyTest, ShortcutsWorkInEachGroupOfALayout) {
  setLayout({"us,ru", "-option", "grp:menu_toggle"});
  ASSERT_TRUE(passes());
  eachShortcutWorks();
  constexpr auto menu = static_cast<Key>(135);
  keyboard.tap(menu);
  eachShortcutWorks();
}

TEST_P(HotKeyTest, NumLockAndCapsLockMakeNoDifference) {
  keyboard.tap(Key::numLock);
  eachShortcutWorks();
  keyboard.tap(Key::capsLock);
  eachShortcutWorks();
  keyboard.tap(Key::numLock);
  eachShortcutWorks();
  keyboard.tap(Key::capsLock);
}

TEST_P(HotKeyTest, LockKeysMakeNoDifferenceWhenTheLayoutChanges) {
  keyboard.tap(Key::numLock);
  keyboard.tap(Key::capsLock);
  setLayout({"de"});
  ASSERT_TRUE(passes());
  eachShortcutWorks();
  keyboard.tap(Key::capsLock);
  eachShortcutWorks();
}

TEST_P(HotKeyTest, TheKeysOfAShortcutReachNobodyElse) {
  press(Place::left);
  EXPECT_TRUE(isTiled(app->window, Place::left));
  EXPECT_EQ(typed(*app, Key::leftBracket), 0);
  keyboard.tap(Key::leftBracket);
  EXPECT_TRUE(comesTrue([&] { return typed(*app, Key::leftBracket) == 1; }));
}

TEST_P(HotKeyTest, AShortcutWithAKeyMoreIsAnother) {
  keyboard.chord({Key::leftControl, Key::leftAlt, Key::leftShift, Key::leftBracket});
  EXPECT_TRUE(comesTrue([&] { return typed(*app, Key::leftBracket) == 1; }));
  ASSERT_TRUE(passes());
  EXPECT_TRUE(isTiled(app->window, Place::full));
}

INSTANTIATE_TEST_SUITE_P(On, HotKeyTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

/// The keys of another program that was there first.
class TakenKeyTest : public DesktopTest {};

TEST_P(TakenKeyTest, ACombinationThatAnotherProgramHasIsLeftToItAndTheOthersWork) {
  constexpr int altAndShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
  App& other = open("other");
  ASSERT_TRUE(other.client.grabKey(static_cast<int>(Key::leftBracket), altAndShift));
  const App& app = open("app");
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  press(Place::right);
  EXPECT_TRUE(isTiled(app.window, Place::right));
  press(Place::left);
  ASSERT_TRUE(passes());
  EXPECT_TRUE(isTiled(app.window, Place::right));
  press(Place::full);
  EXPECT_TRUE(isTiled(app.window, Place::full));
}

INSTANTIATE_TEST_SUITE_P(On, TakenKeyTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
