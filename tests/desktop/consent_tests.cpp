// The user's consent: asked before the first window is touched, remembered, and taken for no until it is given.
#include <algorithm>

#include "desktop_test.h"

namespace tilora::harness {
namespace {

class ConsentTest : public DesktopTest {
 public:
  /// Starts Tilora without the user's consent and waits for its question.
  void startAndAsk() {
    tilora.emplace(runTilora());
    const auto asked = [&] {
      for (const xcb_window_t window : display.clientList()) {
        if (std::none_of(apps.begin(), apps.end(), [&](const App& app) { return app.window == window; })) dialog = window;
      }
      return dialog != XCB_WINDOW_NONE && display.viewable(dialog);
    };
    ASSERT_TRUE(comesTrue(asked));
    // It asks for the focus itself once it is shown.
    ASSERT_TRUE(display.waitForProgram(dialog));
    activate(dialog);
  }

  void answer(Key key) {
    const xcb_window_t gone = dialog;
    keyboard.tap(key);
    EXPECT_TRUE(comesTrue([&] { return !display.clientArea(gone); }));
    dialog = XCB_WINDOW_NONE;
  }

  /// Nobody but their application and the window manager has done anything to the windows since `recordFromNow`.
  void expectUntouched() {
    for (const App& app : apps) {
      EXPECT_EQ(changesOfArea(app.window), 0);
      EXPECT_EQ(count(app.window, WindowEvent::Kind::unmapped), 0);
      EXPECT_FALSE(isMarked(app.window));
      EXPECT_FALSE(display.iconic(app.window));
    }
  }

  xcb_window_t dialog = XCB_WINDOW_NONE;
};

TEST_P(ConsentTest, NothingIsTouchedBeforeTheUserAgrees) {
  const App& first = open("first");
  const App& second = open("second");
  recordFromNow();
  startAndAsk();
  activate(first.window);
  press(Place::left);
  activate(dialog);
  expectUntouched();
  answer(Key::enter);
  activate(first.window);
  EXPECT_TRUE(isTiled(first.window, Place::full));
  EXPECT_TRUE(isHidden(second.window));
}

TEST_P(ConsentTest, AnAnswerOfNoLeavesTheWindowsAloneAndIsNotRemembered) {
  open("first");
  open("second");
  recordFromNow();
  startAndAsk();
  answer(Key::escape);
  press(Place::left);
  tilora->signal(SIGTERM);
  ASSERT_EQ(tilora->waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  expectUntouched();
  startAndAsk();
  expectUntouched();
}

TEST_P(ConsentTest, ConsentIsAskedForOnce) {
  const App& app = open("app");
  startAndAsk();
  answer(Key::enter);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  tilora->signal(SIGTERM);
  ASSERT_TRUE(tilora->waitForEnd());
  tilora.emplace(runTilora());
  press(Place::full);
  const auto runs = [this] { return tiloraResource() != XCB_WINDOW_NONE && tap.of(tiloraResource()).requests[queryPointer] > 1; };
  EXPECT_TRUE(tap.waitUntil(runs));
  EXPECT_EQ(display.clientList(), std::vector<xcb_window_t>{app.window});
}

TEST_P(ConsentTest, TheDialogIsThereUntilTheWindowManagerHasLetGoOfIt) {
  startAndAsk();
  windowManager->process().signal(SIGSTOP);
  keyboard.tap(Key::enter);
  EXPECT_TRUE(comesTrue([&] { return !display.viewable(dialog); }));
  EXPECT_TRUE(display.clientArea(dialog));
  windowManager->process().signal(SIGCONT);
  EXPECT_TRUE(comesTrue([&] { return !display.clientArea(dialog); }));
}

INSTANTIATE_TEST_SUITE_P(On, ConsentTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
