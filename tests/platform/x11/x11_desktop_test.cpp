// The X11 desktop as a whole, as far as it needs no window manager.
#include "platform/x11/x11_desktop.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <stdexcept>
#include <thread>
#include <utility>

#include "bare_server.h"
#include "harness/test_client.h"
#include "platform/simulated/virtual_clock.h"
#include "platform/x11/event_type.h"

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

/// With a window manager, played by the test, that leaves out the requests to make windows iconic. Tilora has asked it for one of a program
/// that was hidden as a whole.
class UnhiddenWindowTest : public testing::Test {
 public:
  UnhiddenWindowTest() {
    const auto application = desktop_.workspace().applicationWithProcessIdentifier(client_.pid());
    if (!application) throw std::runtime_error("the program is not known");
    // Windows that were just shown are not judged before the manager has dealt with them.
    takeRequests();
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    application->hide();
    turn();
  }

  void SetUp() override { ASSERT_EQ(requests(), 1); }

  void setActive(xcb_window_t active) { bare_.display.setCardinals(root(), "_NET_ACTIVE_WINDOW", "WINDOW", {active}); }

  void showDesktop() {
    setActive(XCB_WINDOW_NONE);
    bare_.display.setCardinals(root(), "_NET_SHOWING_DESKTOP", "CARDINAL", {1});
  }

  /// What Tilora asks of the manager is judged by the time that really passes.
  void waitForAReview() {
    constexpr auto longerThanAReview = std::chrono::milliseconds(1060);
    std::this_thread::sleep_for(longerThanAReview);
    clock_.advance(longerThanAReview);
    turn();
  }

  /// How often the manager was asked to make the window iconic since this was asked last. It answers what else it was asked.
  int requests() {
    takeRequests();
    return std::exchange(requested_[window], 0);
  }

  xcb_window_t root() const { return bare_.display.root(); }

 private:
  BareServer bare_;
  harness::TestClient client_{bare_.session};
  harness::TestClient otherClient_{bare_.session};

 public:
  const xcb_window_t window = client_.open();
  const xcb_window_t dialog = client_.open({.type = "DIALOG", .transientFor = window});
  const xcb_window_t other = otherClient_.open();

 private:
  std::unique_ptr<Connection> announced() {
    harness::Display& display = bare_.display;
    auto manager = Connection::open(bare_.server.display());
    constexpr std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(manager->xcb(), root(), XCB_CW_EVENT_MASK, &mask);
    manager->flush();
    display.setCardinals(root(), "_NET_SUPPORTED", "ATOM", {display.atom("_NET_REQUEST_FRAME_EXTENTS")});
    display.setCardinals(root(), "_NET_CLIENT_LIST", "WINDOW", {window, dialog, other});
    setActive(other);
    const xcb_window_t check = otherClient_.open({.title = "leaving out"});
    for (const xcb_window_t announcing : {check, root()}) display.setCardinals(announcing, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    display.sync();
    return manager;
  }

  void turn() {
    bare_.display.sync();
    EXPECT_TRUE(desktop_.dispatch());
    clock_.runPosted();
    EXPECT_TRUE(desktop_.endTurn());
    arrived(*bare_.connection);
  }

  /// Waits until the server has taken what was sent to it.
  static void arrived(Connection& connection) {
    const auto cookie = xcb_get_input_focus(connection.xcb());
    const Reply<xcb_get_input_focus_reply_t> answer{xcb_get_input_focus_reply(connection.xcb(), cookie, nullptr)};
  }

  void takeRequests() {
    pump_.takeAll();
    arrived(*manager_);
    turn();
  }

  void take(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == manager_->atoms().WM_CHANGE_STATE) ++requested_[message.window];
    if (message.type != manager_->atoms()._NET_REQUEST_FRAME_EXTENTS) return;
    constexpr std::array<std::uint32_t, 4> extents = {};
    xcb_change_property(manager_->xcb(), XCB_PROP_MODE_REPLACE, message.window, manager_->atoms()._NET_FRAME_EXTENTS, XCB_ATOM_CARDINAL, 32,
                        extents.size(), extents.data());
  }

  std::unique_ptr<Connection> manager_ = announced();
  EventPump pump_{*manager_, [this](const xcb_generic_event_t& event) { take(event); }};
  std::map<xcb_window_t, int> requested_;
  simulated::VirtualClock clock_;
  NoConsent consent_;
  Instance::Start start_ = Instance::acquire(*bare_.connection);
  X11Desktop desktop_{*bare_.connection, *start_.instance, clock_, consent_};
};

TEST_F(UnhiddenWindowTest, IsAskedOnceMoreWhenTheManagerSaysThatItHasDealtWithTheFirstRequest) {
  waitForAReview();
  EXPECT_EQ(requests(), 0) << "the manager has not answered before";
  EXPECT_EQ(requests(), 1);
  waitForAReview();
  EXPECT_EQ(requests(), 0);
  EXPECT_EQ(requests(), 0) << "it refuses";
}

TEST_F(UnhiddenWindowTest, IsLeftAloneWhileItIsInUse) {
  setActive(window);
  waitForAReview();
  EXPECT_EQ(requests() + requests(), 0);
}

TEST_F(UnhiddenWindowTest, IsLeftAloneWhileADialogOfItsIsInUse) {
  setActive(dialog);
  waitForAReview();
  EXPECT_EQ(requests() + requests(), 0);
}

TEST_F(UnhiddenWindowTest, IsLeftAloneWhileTheDesktopIsShown) {
  showDesktop();
  waitForAReview();
  EXPECT_EQ(requests() + requests(), 0);
}

}  // namespace
}  // namespace tilora::x11
