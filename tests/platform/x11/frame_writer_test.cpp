// Which frames become requests, what is learned from the answers, and when the window's own choice stands. The test plays the window
// manager: it reads the requests, and says where the window came to be.
#include "platform/x11/frame_writer.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

#include "bare_server.h"
#include "platform/x11/event_type.h"

namespace tilora::x11 {
namespace {

using std::chrono::milliseconds;

constexpr PixelRect monitor = {0, 0, 1600, 900};
constexpr PixelRect left = {12, 12, 782, 876};
constexpr Extents decoration = {.left = 1, .right = 1, .top = 20, .bottom = 5};
constexpr auto pass = milliseconds(250);

PixelRect moved(PixelRect rect, int x, int y) { return {rect.x + x, rect.y + y, rect.width, rect.height}; }

class FrameWriterTest : public testing::Test {
 public:
  FrameWriterTest() {
    layout.update({{.frame = monitor, .primary = true, .output = std::nullopt}}, {}, monitor, monitor);
    window.id = bare.connection->root();
    window.decoration = decoration;
    window.client = clientRect({300, 200, 400, 300}, decoration, {});
    constexpr std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(manager_->xcb(), manager_->root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(manager_->xcb());
    pump_.takeAll();
  }

  /// What a pass does about a window that belongs to `frame`: the visible frames that were asked for.
  std::vector<PixelRect> passed(const PixelRect& frame) {
    now += pass;
    window.frame.position = Point{static_cast<double>(frame.x), static_cast<double>(frame.y)};
    window.frame.size = Size{static_cast<double>(frame.width), static_cast<double>(frame.height)};
    writer.write(window, now);
    return requests();
  }

  /// The manager tells that the window is there now: what Tilora answers at once.
  std::vector<PixelRect> told(const PixelRect& frame) {
    window.client = clientRect(frame, window.decoration, window.shadow);
    writer.changed(window, now);
    return requests();
  }

  void setMaximised(bool maximised) {
    window.states.maximizedHorizontally = maximised;
    window.states.maximizedVertically = maximised;
  }

  BareServer bare;
  ScreenLayout layout;
  FrameWriter writer{*bare.connection, layout};
  ClientWindow window;
  FrameWriter::Clock::time_point now = FrameWriter::Clock::now();

 private:
  std::vector<PixelRect> requests() {
    const auto cookie = xcb_get_input_focus(bare.connection->xcb());
    const Reply<xcb_get_input_focus_reply_t> barrier{xcb_get_input_focus_reply(bare.connection->xcb(), cookie, nullptr)};
    pump_.takeAll();
    return std::exchange(requested_, {});
  }

  void take(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type != manager_->atoms()._NET_MOVERESIZE_WINDOW) return;
    const auto& data = message.data.data32;
    const PixelRect client = {static_cast<int>(data[1]), static_cast<int>(data[2]), static_cast<int>(data[3]), static_cast<int>(data[4])};
    requested_.push_back(visibleFrame(client, window.decoration, window.shadow));
  }

  std::unique_ptr<Connection> manager_ = Connection::open(bare.server.display());
  EventPump pump_{*manager_, [this](const xcb_generic_event_t& event) { take(event); }};
  std::vector<PixelRect> requested_;
};

using Frames = std::vector<PixelRect>;

TEST_F(FrameWriterTest, AFrameIsAskedForOnceWhileTheAnswerIsOnItsWay) {
  EXPECT_EQ(passed(left), Frames{left});
  EXPECT_EQ(passed(left), Frames{});
  EXPECT_EQ(told(left), Frames{});
  EXPECT_EQ(passed(left), Frames{});
}

TEST_F(FrameWriterTest, AFrameThatTheWindowHasIsNotAskedFor) {
  told(left);
  EXPECT_EQ(passed(left), Frames{});
}

TEST_F(FrameWriterTest, AWindowThatRefusesIsLeftInPeaceAfterThreeRequests) {
  const PixelRect stubborn = {300, 200, 400, 300};
  EXPECT_EQ(passed(left), Frames{left});
  for (int attempt = 2; attempt <= 3; ++attempt) {
    told(stubborn);
    EXPECT_FALSE(passed(left).empty()) << attempt;
  }
  told(stubborn);
  for (int later = 0; later < 40; ++later) EXPECT_EQ(passed(left), Frames{}) << later;
}

TEST_F(FrameWriterTest, ATerminalThatEndsAtAWholeLineKeepsItsSize) {
  const PixelRect whole = {left.x, left.y, left.width - 4, left.height - 9};
  EXPECT_EQ(passed(left), Frames{left});
  told(whole);
  EXPECT_EQ(passed(left), Frames{left});
  told(whole);
  for (int later = 0; later < 20; ++later) EXPECT_EQ(passed(left), Frames{}) << later;
}

TEST_F(FrameWriterTest, ABorderThatTheManagerReckonsWithIsMadeUpFor) {
  window.declaredBorder = 3;
  EXPECT_EQ(passed(left), Frames{left});
  told(moved(left, 3, 3));
  EXPECT_EQ(passed(left).back(), moved(left, -3, -3));
  told(left);
  EXPECT_EQ(passed(left), Frames{});
}

TEST_F(FrameWriterTest, ABorderThatNobodyToldIsTakenFromAnEqualSmallStep) {
  EXPECT_EQ(passed(left), Frames{left});
  told(moved(left, 2, 2));
  EXPECT_EQ(passed(left).back(), moved(left, -2, -2));
}

TEST_F(FrameWriterTest, WhereAMaximisedWindowIsTellsNothingOfItsBorder) {
  passed(left);
  told(left);
  setMaximised(true);
  told({-1, -1, 1602, 906});
  // It is there while the manager is at it: an equal small step, though not one of a border.
  told(moved(monitor, left.x - 1, left.y - 1));
  EXPECT_EQ(passed(left).back(), left);
  setMaximised(false);
  told(left);
  EXPECT_EQ(passed(left), Frames{});
}

TEST_F(FrameWriterTest, WhereTheUserPutsAWindowThatWasInItsPlaceTellsNothingOfItsBorder) {
  passed(left);
  told(left);
  now += milliseconds(300);
  told(moved(left, 2, 2));
  EXPECT_EQ(passed(left).back(), left);
}

TEST_F(FrameWriterTest, WhatWasMadeUpForInErrorIsTakenBack) {
  passed(left);
  told(moved(left, 2, 2));  // for a reason of its own
  EXPECT_EQ(passed(left).back(), moved(left, -2, -2));
  window.declaredBorder = 0;
  told(moved(left, -2, -2));
  Frames asked;
  for (int later = 0; later < 20; ++later) {
    if (asked = passed(left); !asked.empty()) told(asked.back());
  }
  EXPECT_EQ(window.visible(), left);
}

TEST_F(FrameWriterTest, AWindowThatIsAlwaysOffIsLeftInPeaceAtLast) {
  int requests = 0;
  for (int later = 0; later < 200; ++later) {
    const Frames asked = passed(left);
    if (asked.empty()) continue;
    ++requests;
    told(moved(left, 2, 2));
  }
  EXPECT_EQ(requests, 6);
}

TEST_F(FrameWriterTest, ARequestThatReckonedWithOtherDecorationsIsMadeAnew) {
  EXPECT_EQ(passed(left), Frames{left});
  window.decoration.top = 30;
  EXPECT_EQ(told({left.x, left.y, left.width, left.height + 10}), Frames{left});
  EXPECT_EQ(told(left), Frames{});
}

}  // namespace
}  // namespace tilora::x11
