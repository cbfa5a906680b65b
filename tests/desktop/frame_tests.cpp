// Frames are exact for every kind of window: with and without decorations, maximised, in steps, too large, of one size.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

constexpr int staticGravity = 10;
constexpr int southEastGravity = 9;

class FrameTest : public DesktopTest {
 protected:
  /// The window goes to each place in turn.
  void takesEachPlace(xcb_window_t window) {
    EXPECT_TRUE(isTiled(window, Place::full));
    for (const Place place : {Place::left, Place::right, Place::floating, Place::full}) {
      press(place);
      EXPECT_TRUE(isTiled(window, place));
    }
  }

  void maximise(xcb_window_t window) {
    recordFromNow();
    display.changeState(window, true, "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
    EXPECT_TRUE(comesTrue([&] { return hasChanged(window, "_NET_WM_STATE"); }));
  }
};

/// With a window manager that composites, where it can.
class CompositedFrameTest : public FrameTest {
 protected:
  void SetUp() override { startWindowManager({.compositing = true}); }
  /// What toolkits do: they draw shadows where the window manager knows of them.
  std::optional<Extents> shadows() {
    return isSupported("_GTK_FRAME_EXTENTS") ? Extents{.left = 26, .right = 27, .top = 23, .bottom = 29} : Extents{};
  }
};

TEST_P(FrameTest, AWindowWithoutDecorationsFillsItsPlace) {
  const App& app = open("plain", {.undecorated = true});
  startTilora();
  takesEachPlace(app.window);
}

TEST_P(FrameTest, TheGravityOfAWindowMakesNoDifference) {
  for (const int gravity : {staticGravity, southEastGravity}) {
    const App& app = open("gravity " + std::to_string(gravity), {.gravity = gravity});
    if (!tilora) startTilora();
    takesEachPlace(app.window);
  }
}

TEST_P(FrameTest, AMaximisedWindowIsTiled) {
  const App& app = open("app");
  maximise(app.window);
  startTilora();
  takesEachPlace(app.window);
}

TEST_P(FrameTest, ATiledWindowThatIsMaximisedGoesBackToItsPlace) {
  const App& app = open("app");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  maximise(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(FrameTest, AWindowThatGrowsInStepsEndsInsideItsPlace) {
  const App& app = open("terminal", {.baseWidth = 4, .baseHeight = 5, .widthIncrement = 9, .heightIncrement = 17});
  startTilora();
  for (const Place place : {Place::left, Place::right, Place::full}) {
    press(place);
    EXPECT_TRUE(isTiled(app.window, place, wholeScreen, {.width = 9, .height = 17}));
  }
}

TEST_P(FrameTest, AWindowThatLeavesFullscreenGoesBackToItsPlace) {
  const App& plain = open("plain");
  const App& stepped = open("terminal", {.baseWidth = 4, .baseHeight = 5, .widthIncrement = 9, .heightIncrement = 17});
  startTilora();
  EXPECT_TRUE(isHidden(plain.window));
  for (const auto& [app, steps] : {std::pair(&plain, Steps{}), std::pair(&stepped, Steps{.width = 9, .height = 17})}) {
    const xcb_window_t window = app->window;
    activate(window);
    for (const Place place : {Place::right, Place::full}) {
      press(place);
      EXPECT_TRUE(isTiled(window, place, wholeScreen, steps));
      display.changeState(window, true, "_NET_WM_STATE_FULLSCREEN");
      EXPECT_TRUE(comesTrue([&] { return display.clientArea(window) == wholeScreen; }));
      ASSERT_TRUE(passes());
      display.changeState(window, false, "_NET_WM_STATE_FULLSCREEN");
      // Some move the window first. Until they say so, it is fullscreen, and a shortcut does nothing to it.
      EXPECT_TRUE(
          comesTrue([&] { return display.clientArea(window) != wholeScreen && !display.hasState(window, "_NET_WM_STATE_FULLSCREEN"); }));
      EXPECT_TRUE(isTiled(window, place, wholeScreen, steps));
    }
  }
}

TEST_P(FrameTest, AWindowThatIsTooLargeForItsPlaceStaysOnTheScreen) {
  const App& app = open("wide", {.geometry = {60, 60, 1000, 300}, .minWidth = 1000, .minHeight = 200});
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  press(Place::right);
  EXPECT_TRUE(comesTrue([&] {
    const auto frame = display.frame(app.window);
    return frame && frame->width < 1100 && wholeScreen.contains(*frame) && frame->right() >= wholeScreen.right() - 12;
  }));
  press(Place::left);
  EXPECT_TRUE(comesTrue([&] {
    const auto frame = display.frame(app.window);
    return frame && frame->width < 1100 && wholeScreen.contains(*frame) && frame->x == 12;
  }));
}

TEST_P(FrameTest, AWindowOfOneSizeIsCentredInItsPlace) {
  const App& app = open("fixed", {.geometry = {60, 60, 301, 203}, .minWidth = 301, .minHeight = 203, .maxWidth = 301, .maxHeight = 203});
  startTilora();
  for (const Place place : {Place::left, Place::right, Place::full}) {
    press(place);
    const Edges half = edgesOf(place, display.visibleFrame(wholeScreen));
    EXPECT_TRUE(comesTrue([&] {
      const auto frame = display.frame(app.window);
      const auto area = display.clientArea(app.window);
      if (!frame || !area) return false;
      const double offX = frame->x + frame->width / 2.0 - (half.left + half.right) / 2;
      const double offY = frame->y + frame->height / 2.0 - (half.top + half.bottom) / 2;
      return area->width == 301 && area->height == 203 && std::abs(offX) <= 1 && std::abs(offY) <= 1;
    }));
  }
}

TEST_P(FrameTest, WithoutAGapAWindowWithoutDecorationsCoversTheScreenAndStillMoves) {
  session.home().write("config/tilora/settings.json", R"({"Tilora.WindowPadding": {"type": "double", "value": 0.0}})");
  gap = 0;
  const App& app = open("plain", {.undecorated = true});
  startTilora();
  takesEachPlace(app.window);
}

TEST_P(CompositedFrameTest, TheShadowsThatAWindowDrawsDoNotCount) {
  const App& app = open("shadows", {.shadows = shadows()});
  startTilora();
  takesEachPlace(app.window);
}

TEST_P(CompositedFrameTest, AMaximisedWindowGetsItsShadowsBackAndIsTiled) {
  const App& app = open("shadows", {.shadows = shadows()});
  maximise(app.window);
  startTilora();
  takesEachPlace(app.window);
  maximise(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::full));
}

TEST_P(CompositedFrameTest, AGtkProgramThatDrawsItsOwnFrameIsTiled) {
  session.startBus();
  session.home().write("config/gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
  ManagedProcess program = session.start({"mousepad", "--disable-server"}, {{"GTK_CSD", "1"}});
  ASSERT_TRUE(display.waitUntil([&] { return display.clientList().size() == 1; }, std::chrono::seconds(30))) << program.output();
  const xcb_window_t window = display.clientList().front();
  display.watch(window);
  startTilora();
  activate(window);
  takesEachPlace(window);
  maximise(window);
  EXPECT_TRUE(isTiled(window, Place::full));
}

INSTANTIATE_TEST_SUITE_P(On, FrameTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, CompositedFrameTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
