// Several monitors: panels on outer and inner edges, odd widths, monitors that come and go, a fullscreen window on one of them.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

constexpr PixelRect leftMonitor = {0, 0, 901, 900};
constexpr PixelRect rightMonitor = {901, 0, 699, 900};

/// The numbers of _NET_WM_STRUT_PARTIAL, by their place.
enum StrutPart : std::size_t {
  left,
  right,
  top,
  bottom,
  leftStart,
  leftEnd,
  rightStart,
  rightEnd,
  topStart,
  topEnd,
  bottomStart,
  bottomEnd
};

class MonitorTest : public DesktopTest {
 protected:
  MonitorTest() : DesktopTest({leftMonitor, rightMonitor}) {}
  void SetUp() override {
    server.plugIn(1);
    startWindowManager();
  }

  /// An application whose window begins on `monitor`.
  App& openOn(const PixelRect& monitor, const std::string& name) {
    App& app = open(name, {.geometry = {monitor.x + 100, 200, 300, 200}, .positioned = true});
    const auto isThere = [&] {
      const auto frame = display.frame(app.window);
      return frame && monitor.overlaps({frame->x + frame->width / 2, frame->y + frame->height / 2, 1, 1});
    };
    // Some window managers know better.
    if (!isThere())
      display.sendRootMessage(app.window, "_NET_MOVERESIZE_WINDOW",
                              {10U | 0xfU << 8U, static_cast<std::uint32_t>(monitor.x) + 100, 200, 300, 200});
    EXPECT_TRUE(comesTrue(isThere));
    return app;
  }

  /// A panel of an application of its own.
  App& openPanel(const PixelRect& area, const std::vector<std::pair<StrutPart, int>>& parts) {
    WindowOptions options = {
        .title = "panel", .instance = "panel", .className = "panel", .type = "DOCK", .geometry = area, .positioned = true};
    for (const auto& [part, value] : parts) options.strut.at(part) = static_cast<std::uint32_t>(value);
    App& app = apps.emplace_back(App{.client = TestClient(session)});
    app.window = app.client.open(options);
    display.watch(app.window);
    EXPECT_TRUE(comesTrue([&] { return display.viewable(app.window); }));
    return app;
  }
};

/// Monitors that the user made of parts of one output (xrandr --setmonitor). Not every window manager takes notice of those.
class VirtualMonitorTest : public DesktopTest {};

TEST_P(MonitorTest, EachMonitorShowsAWindowOfItsOwn) {
  startTilora();
  const App& onRight = openOn(rightMonitor, "on right");
  EXPECT_TRUE(isTiled(onRight.window, Place::full, rightMonitor));
  const App& hidden = openOn(leftMonitor, "hidden");
  EXPECT_TRUE(isTiled(hidden.window, Place::full, leftMonitor));
  const App& onLeft = openOn(leftMonitor, "on left");
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  EXPECT_TRUE(isHidden(hidden.window));
  press(Place::left);
  EXPECT_TRUE(isTiled(onLeft.window, Place::left, leftMonitor));
  activate(onRight.window);
  press(Place::right);
  EXPECT_TRUE(isTiled(onRight.window, Place::right, rightMonitor));
  EXPECT_TRUE(isTiled(onLeft.window, Place::left, leftMonitor));
}

TEST_P(MonitorTest, APairOnAMonitorOfOddWidthLeavesTheGapBetweenItToAPixel) {
  startTilora();
  const App& first = openOn(rightMonitor, "first");
  EXPECT_TRUE(isTiled(first.window, Place::full, rightMonitor));
  press(Place::left);
  EXPECT_TRUE(isTiled(first.window, Place::left, rightMonitor));
  const App& second = openOn(rightMonitor, "second");
  EXPECT_TRUE(isTiled(second.window, Place::full, rightMonitor));
  press(Place::right);
  EXPECT_TRUE(isTiled(second.window, Place::right, rightMonitor));
  EXPECT_TRUE(isTiled(first.window, Place::left, rightMonitor));
  const int between = display.frame(second.window)->x - display.frame(first.window)->right();
  EXPECT_GE(between, 11);
  EXPECT_LE(between, 13);
}

TEST_P(MonitorTest, APanelOnAnOuterEdgeIsLeftFree) {
  openPanel({0, 870, 901, 30}, {{bottom, 30}, {bottomStart, 0}, {bottomEnd, 900}});
  const App& onLeft = openOn(leftMonitor, "on left");
  const App& onRight = openOn(rightMonitor, "on right");
  startTilora();
  EXPECT_EQ(display.visibleFrame(leftMonitor), (PixelRect{0, 0, 901, 870}));
  EXPECT_EQ(display.visibleFrame(rightMonitor), rightMonitor);
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  EXPECT_TRUE(isTiled(onRight.window, Place::full, rightMonitor));
}

TEST_P(MonitorTest, APanelOnAnInnerEdgeIsLeftFreeOnItsMonitorAndMakesNoDifferenceOnTheOther) {
  // Measured from the edge of the root, as all struts are.
  openPanel({901, 0, 40, 900}, {{StrutPart::left, 941}, {leftStart, 0}, {leftEnd, 899}});
  const App& onRight = openOn({941, 0, 659, 900}, "on right");
  startTilora();
  EXPECT_EQ(display.visibleFrame(rightMonitor), (PixelRect{941, 0, 659, 900}));
  EXPECT_TRUE(isTiled(onRight.window, Place::full, rightMonitor));
  // The others keep every window out of the left monitor then, with or without Tilora.
  if (!runsOn({WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::icewm, WindowManagerKind::fluxbox})) return;
  const App& onLeft = openOn(leftMonitor, "on left");
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  EXPECT_TRUE(isTiled(onRight.window, Place::full, rightMonitor));
}

TEST_P(MonitorTest, APanelThatAppearsAndGoesMovesTheWindows) {
  const App& onLeft = openOn(leftMonitor, "on left");
  startTilora();
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  App& panel = openPanel({0, 0, 901, 40}, {{top, 40}, {topStart, 0}, {topEnd, 900}});
  EXPECT_EQ(display.visibleFrame(leftMonitor), (PixelRect{0, 40, 901, 860}));
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  panel.client.setStrut(panel.window, {0, 0, 80, 0, 0, 0, 0, 0, 0, 900, 0, 0});
  EXPECT_TRUE(comesTrue([&] { return display.frame(onLeft.window)->y == 92; }));
  panel.client.destroy(panel.window);
  EXPECT_TRUE(comesTrue([&] { return display.frame(onLeft.window)->y == 12; }));
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
}

TEST_P(MonitorTest, TheWindowsOfAMonitorThatIsUnpluggedMoveToTheOtherOne) {
  const App& onLeft = openOn(leftMonitor, "on left");
  const App& onRight = openOn(rightMonitor, "on right");
  startTilora();
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  EXPECT_TRUE(isTiled(onRight.window, Place::full, rightMonitor));
  server.unplug(1);
  activate(onRight.window);
  EXPECT_TRUE(isTiled(onRight.window, Place::full, leftMonitor));
  EXPECT_TRUE(isHidden(onLeft.window));
  activate(onLeft.window);
  EXPECT_TRUE(isTiled(onLeft.window, Place::full, leftMonitor));
  EXPECT_TRUE(isHidden(onRight.window));
}

TEST_P(MonitorTest, AMonitorThatIsPluggedInGetsItsWindows) {
  server.unplug(1);
  const App& first = openOn(leftMonitor, "first");
  const App& second = openOn(leftMonitor, "second");
  startTilora();
  EXPECT_TRUE(isTiled(second.window, Place::full, leftMonitor));
  EXPECT_TRUE(isHidden(first.window));
  server.plugIn(1);
  const App& third = openOn(rightMonitor, "third");
  EXPECT_TRUE(isTiled(third.window, Place::full, rightMonitor));
  EXPECT_TRUE(isTiled(second.window, Place::full, leftMonitor));
  EXPECT_TRUE(display.iconic(first.window));
}

TEST_P(MonitorTest, AFullscreenWindowIsLeftAloneWhileWorkGoesOnOnTheOtherMonitor) {
  const App& first = openOn(leftMonitor, "first");
  const App& second = openOn(leftMonitor, "second");
  const App& film = openOn(rightMonitor, "film");
  display.changeState(film.window, true, "_NET_WM_STATE_FULLSCREEN");
  ASSERT_TRUE(comesTrue([&] { return display.clientArea(film.window) == rightMonitor; }));
  startTilora();
  activate(first.window);
  EXPECT_TRUE(isTiled(first.window, Place::full, leftMonitor));
  recordFromNow();
  press(Place::left);
  EXPECT_TRUE(isTiled(first.window, Place::left, leftMonitor));
  activate(second.window);
  EXPECT_TRUE(isTiled(second.window, Place::full, leftMonitor));
  EXPECT_TRUE(isHidden(first.window));
  ASSERT_TRUE(passes());
  EXPECT_EQ(display.clientArea(film.window), rightMonitor);
  EXPECT_TRUE(display.hasState(film.window, "_NET_WM_STATE_FULLSCREEN"));
  EXPECT_EQ(changesOfArea(film.window), 0);
  EXPECT_EQ(count(film.window, WindowEvent::Kind::unmapped), 0);
  activate(film.window);
  ASSERT_TRUE(passes());
  EXPECT_EQ(display.clientArea(film.window), rightMonitor);
  EXPECT_TRUE(isTiled(second.window, Place::full, leftMonitor));
}

TEST_P(VirtualMonitorTest, APartOfAnOutputIsAScreenOfItsOwn) {
  startTilora();
  const App& app = open("app");
  EXPECT_TRUE(isTiled(app.window, Place::full));
  display.setMonitors({{"left", leftMonitor, true}, {"right", rightMonitor, false}});
  EXPECT_TRUE(isTiled(app.window, Place::full, leftMonitor));
  press(Place::right);
  EXPECT_TRUE(isTiled(app.window, Place::right, leftMonitor));
  display.setMonitors({{"whole", wholeScreen, true}});
  EXPECT_TRUE(isTiled(app.window, Place::right));
}

INSTANTIATE_TEST_SUITE_P(On, MonitorTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, VirtualMonitorTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
