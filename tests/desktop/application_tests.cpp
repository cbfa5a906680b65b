// What counts as one application: processes with many windows, with several classes, without a process id, on other hosts.
#include <algorithm>

#include "desktop_test.h"

namespace tilora::harness {
namespace {

class ApplicationTest : public DesktopTest {
 protected:
  static WindowOptions options(const std::string& title, const std::string& className) {
    return {.title = title, .instance = className, .className = className};
  }
};

TEST_P(ApplicationTest, OfTwentyWindowsOfAProcessOneIsShown) {
  startTilora();
  TestClient client(session);
  constexpr int count = 20;
  std::vector<xcb_window_t> windows;
  windows.reserve(count);
  for (int number = 0; number < count; ++number)
    windows.push_back(openWindow(client, options("window " + std::to_string(number), "browser")));
  EXPECT_TRUE(isTiled(windows.back(), Place::full));
  for (const xcb_window_t window : windows) {
    if (window != windows.back()) {
      EXPECT_TRUE(isHidden(window));
    }
  }
  activate(windows.front());
  EXPECT_TRUE(isTiled(windows.front(), Place::full));
  EXPECT_TRUE(isHidden(windows.back()));
  EXPECT_EQ(std::count_if(windows.begin(), windows.end(), [&](xcb_window_t window) { return display.iconic(window); }), 19);
}

TEST_P(ApplicationTest, TwoWindowsOfAProcessMakeAPair) {
  startTilora();
  TestClient client(session);
  const xcb_window_t first = openWindow(client, options("first", "browser"));
  EXPECT_TRUE(isTiled(first, Place::full));
  press(Place::left);
  EXPECT_TRUE(isTiled(first, Place::left));
  const xcb_window_t second = openWindow(client, options("second", "browser"));
  EXPECT_TRUE(isActive(second));
  press(Place::right);
  EXPECT_TRUE(isTiled(second, Place::right));
  EXPECT_TRUE(isShown(second));
}

TEST_P(ApplicationTest, TheClassesOfAProcessAreApplicationsOfTheirOwn) {
  startTilora();
  TestClient client(session);
  const xcb_window_t writer = openWindow(client, options("text", "writer"));
  EXPECT_TRUE(isTiled(writer, Place::full));
  press(Place::left);
  EXPECT_TRUE(isTiled(writer, Place::left));
  const xcb_window_t calc = openWindow(client, options("table", "calc"));
  EXPECT_TRUE(isTiled(calc, Place::full));
  press(Place::right);
  EXPECT_TRUE(isTiled(calc, Place::right));
  EXPECT_TRUE(isTiled(writer, Place::left));
  client.destroy(writer);
  client.destroy(calc);
  const xcb_window_t again = openWindow(client, options("other text", "writer"));
  EXPECT_TRUE(isTiled(again, Place::left));
}

TEST_P(ApplicationTest, WindowsOfUnknownProcessesAndOfOtherHostsAreTiled) {
  startTilora();
  TestClient client(session);
  const std::vector<WindowOptions> strangers = {
      {.title = "no process", .instance = "one", .className = "one", .declaresProcess = false},
      {.title = "other host", .instance = "two", .className = "two", .processId = 1, .machine = "elsewhere.example"},
      {.title = "no such process", .instance = "three", .className = "three", .processId = 4294967295U},
      {.title = "no class", .instance = "", .className = "", .declaresProcess = false},
      {.title = "no type", .instance = "five", .className = "five", .type = ""},
  };
  xcb_window_t before = XCB_WINDOW_NONE;
  for (const WindowOptions& stranger : strangers) {
    const xcb_window_t window = openWindow(client, stranger);
    EXPECT_TRUE(isTiled(window, Place::full));
    if (before != XCB_WINDOW_NONE) {
      EXPECT_TRUE(isHidden(before));
    }
    press(Place::left);
    EXPECT_TRUE(isTiled(window, Place::left));
    before = window;
  }
}

TEST_P(ApplicationTest, PanelsPalettesAndWindowsBesideTheTaskbarAreLeftAlone) {
  startTilora();
  const App& app = open("app");
  EXPECT_TRUE(isTiled(app.window, Place::full));
  TestClient client(session);
  std::vector<xcb_window_t> others;
  for (const std::string type : {"UTILITY", "SPLASH", "TOOLBAR"}) {
    others.push_back(client.open({.title = type, .type = type, .geometry = {700, 400, 200, 100}, .positioned = true}));
  }
  others.push_back(client.open({.title = "drop down", .geometry = {700, 400, 200, 100}, .positioned = true, .states = {"SKIP_TASKBAR"}}));
  for (const xcb_window_t window : others) {
    display.watch(window);
    EXPECT_TRUE(comesTrue([&] { return display.viewable(window); }));
  }
  ASSERT_TRUE(passes());
  recordFromNow();
  ASSERT_TRUE(passes(2));
  for (const xcb_window_t window : others) {
    EXPECT_TRUE(display.viewable(window));
    EXPECT_FALSE(isMarked(window));
    EXPECT_EQ(changesOfArea(window), 0);
  }
}

TEST_P(ApplicationTest, AHungApplicationHoldsNothingUp) {
  App& hung = open("hung");
  const App& app = open("app");
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  hung.client.suspend();
  display.activate(hung.window);
  EXPECT_TRUE(isHidden(app.window));
  EXPECT_TRUE(isTiled(hung.window, Place::full));
  ASSERT_TRUE(passes());
  activate(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  hung.client.resume();
}

INSTANTIATE_TEST_SUITE_P(On, ApplicationTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
