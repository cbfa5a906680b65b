// When a window is asked to become iconic, and what its silence means. The test plays the window manager: it reads the requests, and says
// whether the window is iconic.
#include "platform/x11/hide_writer.h"

#include <gtest/gtest.h>

#include <utility>

#include "bare_server.h"
#include "platform/x11/event_type.h"

namespace tilora::x11 {
namespace {

using std::chrono::milliseconds;

constexpr auto notLong = milliseconds(900);
constexpr auto tooLong = milliseconds(1050);

class HideWriterTest : public testing::Test {
 public:
  HideWriterTest() {
    window.id = bare.connection->root();
    constexpr std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(manager_->xcb(), manager_->root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(manager_->xcb());
    pump_.takeAll();
    window.marks.window = true;
    writer.hide(window, now);
  }

  /// How often the window was asked to become iconic since this was asked last.
  int requests() {
    const auto cookie = xcb_get_input_focus(bare.connection->xcb());
    const Reply<xcb_get_input_focus_reply_t> barrier{xcb_get_input_focus_reply(bare.connection->xcb(), cookie, nullptr)};
    pump_.takeAll();
    return std::exchange(requests_, 0);
  }

  bool isMarkStored() { return bare.display.hasProperty(window.id, "_TILORA_HIDDEN"); }

  BareServer bare;
  HideWriter writer{*bare.connection};
  ClientWindow window;
  HideWriter::Clock::time_point now = HideWriter::Clock::now();

 private:
  void take(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == manager_->atoms().WM_CHANGE_STATE) ++requests_;
  }

  std::unique_ptr<Connection> manager_ = Connection::open(bare.server.display());
  EventPump pump_{*manager_, [this](const xcb_generic_event_t& event) { take(event); }};
  int requests_ = 0;
};

TEST_F(HideWriterTest, AWindowIsMarkedAndAskedOnce) {
  EXPECT_EQ(requests(), 1);
  EXPECT_TRUE(isMarkStored());
  EXPECT_FALSE(HideWriter::isToBeHidden(window));
}

TEST_F(HideWriterTest, AWindowThatTakesItsTimeIsNotAskedAgain) {
  ASSERT_EQ(requests(), 1);
  EXPECT_FALSE(HideWriter::waitsLonger(window, now + notLong));
  EXPECT_FALSE(writer.expire(window, now + notLong));
  EXPECT_TRUE(HideWriter::waitsLonger(window, now + tooLong));
  window.states.hidden = true;
  writer.repeat(window, now + tooLong);
  EXPECT_FALSE(writer.settle(window));
  writer.repeat(window, now + tooLong);
  EXPECT_FALSE(HideWriter::waitsLonger(window, now + 2 * tooLong));
  EXPECT_FALSE(writer.expire(window, now + 2 * tooLong));
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(window.marks.window);
}

TEST_F(HideWriterTest, ARequestThatWasLeftOutIsMadeOnceMore) {
  ASSERT_EQ(requests(), 1);
  ASSERT_TRUE(HideWriter::waitsLonger(window, now + tooLong));
  EXPECT_FALSE(HideWriter::waitsLonger(window, now + tooLong));
  writer.repeat(window, now + tooLong);
  EXPECT_EQ(requests(), 1);
  EXPECT_FALSE(writer.expire(window, now + tooLong + notLong));
  window.states.hidden = true;
  EXPECT_FALSE(writer.settle(window));
  EXPECT_EQ(window.iconRequest, IconRequest::none);
  EXPECT_FALSE(window.refusesHiding);
  EXPECT_TRUE(window.marks.window);
  EXPECT_TRUE(isMarkStored());
}

TEST_F(HideWriterTest, AWindowThatDoesNotHideAtTheSecondRequestEitherRefuses) {
  ASSERT_TRUE(HideWriter::waitsLonger(window, now + tooLong));
  writer.repeat(window, now + tooLong);
  ASSERT_EQ(requests(), 2);
  EXPECT_FALSE(HideWriter::waitsLonger(window, now + 2 * tooLong));
  EXPECT_TRUE(writer.expire(window, now + 2 * tooLong));
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(window.refusesHiding);
  EXPECT_FALSE(window.marks.any());
  // A manager that hides it when this program has gone leaves a window that is known to be hidden by it.
  EXPECT_TRUE(isMarkStored());
}

TEST_F(HideWriterTest, EachWishToHideAWindowHasItsSecondRequest) {
  ASSERT_TRUE(HideWriter::waitsLonger(window, now + tooLong));
  writer.repeat(window, now + tooLong);
  window.states.hidden = true;
  ASSERT_FALSE(writer.settle(window));
  window.states.hidden = false;
  ASSERT_TRUE(writer.settle(window));
  window.marks.window = true;
  writer.hide(window, now + 2 * tooLong);
  ASSERT_EQ(requests(), 3);
  EXPECT_TRUE(HideWriter::waitsLonger(window, now + 3 * tooLong));
  writer.repeat(window, now + 3 * tooLong);
  EXPECT_EQ(requests(), 1);
}

TEST_F(HideWriterTest, NothingIsAskedForAWindowThatIsToBeSeenAgain) {
  ASSERT_TRUE(HideWriter::waitsLonger(window, now + tooLong));
  window.marks = {};
  writer.repeat(window, now + tooLong);
  writer.restore(window, WindowManagerTraits{}, XCB_CURRENT_TIME, now + tooLong);
  writer.repeat(window, now + tooLong);
  EXPECT_FALSE(HideWriter::waitsLonger(window, now + 3 * tooLong));
  EXPECT_EQ(requests(), 1);
}

}  // namespace
}  // namespace tilora::x11
