// While the user drags a window nothing moves; afterwards it goes back to its place.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class WindowDragTest : public DesktopTest {
 protected:
  /// Moves the pointer there with the button held, as slowly as Tilora makes its passes: window managers skip what is faster.
  void drag(int fromX, int fromY, int toX, int toY) {
    pointer.moveTo(fromX, fromY);
    pointer.press();
    constexpr int steps = 4;
    for (int step = 1; step <= steps; ++step) {
      ASSERT_TRUE(passes());
      pointer.moveTo(fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
    }
  }

  /// The window has left its place, and stays away over passes of Tilora.
  void expectHeld(xcb_window_t window, const PixelRect& place) {
    EXPECT_TRUE(comesTrue([&] { return display.frame(window) && std::abs(display.frame(window)->x - place.x) > 100; }));
    ASSERT_TRUE(passes());
    const auto held = display.frame(window);
    ASSERT_TRUE(passes(2));
    EXPECT_EQ(display.frame(window), held);
  }
};

/// By the title bar.
class TitleDragTest : public WindowDragTest {};

TEST_P(TitleDragTest, AWindowThatIsDraggedByItsTitleStaysInTheHandAndGoesBackAfterwards) {
  const App& app = open("app");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  const PixelRect place = *display.frame(app.window);
  const int x = place.x + place.width / 2;
  const int y = (place.y + display.clientArea(app.window)->y) / 2;
  // Mutter lets nobody take a window that it has resized a moment ago.
  ASSERT_TRUE(passes());
  drag(x, y, x + 260, y + 140);
  expectHeld(app.window, place);
  pointer.release();
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(WindowDragTest, AWindowThatIsMovedWithAltStaysInTheHandAndGoesBackAfterwards) {
  const App& app = open("app");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  const PixelRect place = *display.frame(app.window);
  // What a window manager moves windows with out of the box.
  const bool withSuper = runsOn({WindowManagerKind::metacity, WindowManagerKind::mutter, WindowManagerKind::kwin});
  const Key modifier = withSuper ? Key::leftSuper : Key::leftAlt;
  // As above.
  ASSERT_TRUE(passes());
  keyboard.press(modifier);
  drag(400, 450, 660, 560);
  expectHeld(app.window, place);
  pointer.release();
  keyboard.release(modifier);
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(TitleDragTest, AFloatingWindowGoesWhereItIsDragged) {
  const App& app = open("app");
  startTilora();
  press(Place::floating);
  EXPECT_TRUE(isTiled(app.window, Place::floating));
  const PixelRect place = *display.frame(app.window);
  const int x = place.x + place.width / 2;
  const int y = (place.y + display.clientArea(app.window)->y) / 2;
  // Mutter lets nobody take a window that it has resized a moment ago.
  ASSERT_TRUE(passes());
  drag(x, y, x + 100, y + 30);
  pointer.release();
  EXPECT_TRUE(comesTrue([&] { return display.frame(app.window) && display.frame(app.window)->x > place.x + 50; }));
  ASSERT_TRUE(passes());
  const auto moved = display.frame(app.window);
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.frame(app.window), moved);
}

INSTANTIATE_TEST_SUITE_P(On, WindowDragTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
// KWin alone, without a theme, draws no title bars.
INSTANTIATE_TEST_SUITE_P(On, TitleDragTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::metacity,
                                         WindowManagerKind::marco, WindowManagerKind::icewm, WindowManagerKind::fluxbox,
                                         WindowManagerKind::jwm, WindowManagerKind::mutter),
                         windowManagerOf);

}  // namespace
}  // namespace tilora::harness
