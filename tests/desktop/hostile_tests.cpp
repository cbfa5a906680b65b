// Windows that lie, overflow, contradict themselves or die: Tilora goes on, and the other windows with it.
#include <string>

#include "desktop_test.h"

namespace tilora::harness {
namespace {

class HostileTest : public DesktopTest {
 protected:
  void setBytes(xcb_window_t window, std::string_view property, std::string_view type, int format, const std::string& bytes) {
    xcb_change_property(display.xcb(), XCB_PROP_MODE_REPLACE, window, display.atom(property), display.atom(type),
                        static_cast<std::uint8_t>(format), static_cast<std::uint32_t>(bytes.size() * 8 / static_cast<unsigned>(format)),
                        bytes.data());
    display.sync();
  }

  /// Another window is tiled as ever, by a pass and by a shortcut.
  void expectWorkGoesOn() {
    const App& app = open("well behaved " + std::to_string(apps.size()));
    EXPECT_TRUE(isTiled(app.window, Place::full));
    press(Place::left);
    EXPECT_TRUE(isTiled(app.window, Place::left));
    EXPECT_TRUE(tilora->running());
  }
};

/// Windows that go while something is being done to them.
class MortalTest : public HostileTest {};

TEST_P(HostileTest, TextsThatAreNoTextAreSurvived) {
  const App& app = open("app");
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  const std::string broken = "\xff\xfe\xc3(\xed\xa0\x80\xf8\x88";
  for (const std::string& text : {broken, std::string(200'000, 'x'), std::string(1, '\0'), std::string("||"), std::string("\"}\n{")}) {
    for (const char* property : {"_NET_WM_NAME", "WM_NAME", "WM_CLASS", "WM_WINDOW_ROLE", "WM_CLIENT_MACHINE", "_GTK_APPLICATION_ID"}) {
      setBytes(app.window, property, "UTF8_STRING", 8, text);
    }
    press(Place::right);
    EXPECT_TRUE(isTiled(app.window, Place::right));
    press(Place::left);
    EXPECT_TRUE(isTiled(app.window, Place::left));
  }
  expectWorkGoesOn();
  tilora->signal(SIGTERM);
  EXPECT_EQ(tilora->waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  startTilora();
  expectWorkGoesOn();
}

TEST_P(HostileTest, NumbersThatMakeNoSenseAreSurvived) {
  startTilora();
  App& app = open("app");
  EXPECT_TRUE(isTiled(app.window, Place::full));
  const std::vector<std::uint32_t> ones(18, 0xffffffffU);
  const std::vector<std::uint32_t> nothing;
  for (const auto& numbers : {ones, nothing, std::vector<std::uint32_t>{1}, std::vector<std::uint32_t>(3000, 0x7fffffffU)}) {
    for (const char* property : {"_NET_WM_PID", "_NET_WM_WINDOW_TYPE", "WM_TRANSIENT_FOR", "WM_CLIENT_LEADER", "_TILORA_HIDDEN"}) {
      display.setCardinals(app.window, property, "CARDINAL", numbers);
    }
    for (const char* property : {"_GTK_FRAME_EXTENTS", "_NET_WM_STRUT", "_NET_WM_STRUT_PARTIAL", "WM_NORMAL_HINTS"}) {
      display.setCardinals(app.window, property, "CARDINAL", numbers);
    }
    setBytes(app.window, "_NET_WM_STATE", "STRING", 8, "text");
    ASSERT_TRUE(passes());
  }
  app.client.destroy(app.window);
  expectWorkGoesOn();
}

TEST_P(HostileTest, SizeHintsThatContradictThemselvesAreSurvived) {
  startTilora();
  for (const WindowOptions& options :
       {WindowOptions{.minWidth = 900, .minHeight = 700, .maxWidth = 100, .maxHeight = 80},
        WindowOptions{.widthIncrement = 5000, .heightIncrement = 5000}, WindowOptions{.minWidth = 30000, .minHeight = 30000}}) {
    App& app = open("contradiction " + std::to_string(apps.size()), options);
    press(Place::right);
    ASSERT_TRUE(passes());
    app.client.destroy(app.window);
  }
  expectWorkGoesOn();
}

TEST_P(HostileTest, WindowsThatAreTransientForEachOtherAreSurvived) {
  startTilora();
  App& first = open("first");
  const xcb_window_t second = openWindow(first.client, {.title = "second", .transientFor = first.window});
  display.setCardinals(first.window, "WM_TRANSIENT_FOR", "WINDOW", {second});
  ASSERT_TRUE(passes());
  display.setCardinals(second, "WM_TRANSIENT_FOR", "WINDOW", {second});
  ASSERT_TRUE(passes());
  first.client.destroy(second);
  first.client.destroy(first.window);
  expectWorkGoesOn();
}

TEST_P(MortalTest, AWindowMayDieAtAnyMoment) {
  startTilora();
  const App& partner = open("partner");
  EXPECT_TRUE(isTiled(partner.window, Place::full));
  press(Place::left);
  EXPECT_TRUE(isTiled(partner.window, Place::left));
  TestClient client(session);
  for (std::size_t moment = 0; moment < 24; ++moment) {
    const xcb_window_t window = client.open({.title = "short lived", .instance = "short", .className = "short"});
    display.watch(window);
    display.clearEvents();
    if (moment % 3 == 0) press(Place::right);
    // The life of a window is what happens to it: it ends after none, one, two... of those events, or when Tilora is done with it.
    EXPECT_TRUE(comesTrue([&] {
      const auto frame = display.frame(window);
      return display.events().size() >= moment || display.iconic(window) || (frame && frame->width > 700);
    }));
    if (moment % 2 == 0) {
      client.destroy(window);
    } else {
      client.withdraw(window);
    }
  }
  ASSERT_TRUE(passes());
  EXPECT_TRUE(tilora->running());
  expectWorkGoesOn();
}

TEST_P(MortalTest, AWindowThatTakesItsSizeBackEachTimeIsLeftInPeaceInTheEnd) {
  constexpr std::uint8_t sendEvent = 25;
  WireTap requests(server.display(), sendEvent);
  startTilora();
  const auto asked = [&] {
    requests.waitUntil([] { return true; });
    return requests.of(tiloraResource()).requests[sendEvent];
  };
  const WindowOptions options{.stubborn = true};
  const App& app = open("stubborn", options);
  press(Place::right);
  // Nothing is asked of it any more when a second of passes goes by without a request.
  constexpr int mostSeconds = 10;
  int seconds = 0;
  for (int before = -1; before != asked() && seconds < mostSeconds; ++seconds) {
    before = asked();
    ASSERT_TRUE(passes(4));
  }
  EXPECT_LT(seconds, mostSeconds);
  EXPECT_EQ(display.clientArea(app.window)->width, options.geometry.width);
  expectWorkGoesOn();
}

TEST_P(MortalTest, AnApplicationThatIsKilledLeavesNothingBehind) {
  startTilora();
  const Pair pair = openPair();
  pair.right.client.process().signal(SIGKILL);
  EXPECT_TRUE(comesTrue([&] { return display.clientList() == std::vector<xcb_window_t>{pair.left.window}; }));
  EXPECT_TRUE(isTiled(pair.left.window, Place::left));
  expectWorkGoesOn();
}

// Others end or stand still themselves when they meet such windows.
INSTANTIATE_TEST_SUITE_P(On, HostileTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::kwin),
                         windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, MortalTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
