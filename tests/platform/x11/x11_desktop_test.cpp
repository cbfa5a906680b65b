// The X11 desktop as a whole, as far as it needs no window manager.
#include "platform/x11/x11_desktop.h"

#include <gtest/gtest.h>

#include "bare_server.h"
#include "platform/simulated/virtual_clock.h"

namespace tilora::x11 {
namespace {

using harness::Key;

class NoConsent final : public Consent {
 public:
  bool isGiven() override { return false; }
  void ask(const std::vector<std::string>&) override {}
};

class X11DesktopTest : public testing::Test {
 public:
  BareServer bare;
  simulated::VirtualClock clock;
  NoConsent consent;
  Instance::Start start = Instance::acquire(*bare.connection);
  X11Desktop desktop{*bare.connection, *start.instance, clock, consent};
  std::vector<std::uint32_t> fired;
  std::optional<Subscription> handler = desktop.hotKeys().installHandler([this](std::uint32_t id) { fired.push_back(id); });

  void SetUp() override {
    ASSERT_TRUE(desktop.hotKeys().registerHotKey(1, 33, 0xA00));
    ASSERT_TRUE(desktop.hotKeys().registerHotKey(2, 30, 0xA00));
  }

  void tap(Key key) { bare.keyboard.chord({Key::leftAlt, Key::leftShift, key}); }

  /// What fires when the program looks at its events after all that has been pressed.
  std::vector<std::uint32_t> firedNow() {
    fired.clear();
    bare.display.sync();
    EXPECT_TRUE(desktop.dispatch());
    EXPECT_TRUE(desktop.endTurn());
    return fired;
  }
};

TEST_F(X11DesktopTest, AKeyThatIsUpAgainBeforeTheProgramLooksFiresEachTime) {
  for (int i = 0; i < 3; ++i) {
    tap(Key::leftBracket);
    EXPECT_EQ(firedNow(), std::vector<std::uint32_t>{1}) << i;
  }
}

TEST_F(X11DesktopTest, KeysPressedBeforeTheProgramLooksFireInTheirOrder) {
  for (const Key key : {Key::leftBracket, Key::rightBracket, Key::rightBracket, Key::leftBracket}) tap(key);
  EXPECT_EQ(firedNow(), (std::vector<std::uint32_t>{1, 2, 2, 1}));
}

TEST_F(X11DesktopTest, AServerThatEndsIsNoticed) {
  bare.server.process().terminate();
  EXPECT_FALSE(desktop.dispatch() && desktop.endTurn());
}

}  // namespace
}  // namespace tilora::x11
