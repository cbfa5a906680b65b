// From the desktop's screens to Qt's.
#include "app/ui/visible_frame.h"

#include <gtest/gtest.h>

namespace tilora::app {
namespace {

ScreenRef screen(Rect frame, Rect visible) { return std::make_shared<const Screen>(Screen{frame, visible, std::nullopt}); }

TEST(VisibleFrame, TurnsTheYAxisOver) {
  const std::vector screens = {screen({0, 0, 1600, 900}, {0, 30, 1600, 850})};
  EXPECT_EQ(visibleFrameIn(screens, {0, 0, 1600, 900}, 1), QRect(0, 20, 1600, 850));
}

TEST(VisibleFrame, IsThatOfTheScreenAskedFor) {
  const std::vector screens = {screen({0, 200, 1000, 600}, {0, 200, 1000, 570}), screen({1000, 0, 1200, 800}, {1000, 40, 1200, 760})};
  EXPECT_EQ(visibleFrameIn(screens, {0, 0, 1000, 600}, 1), QRect(0, 30, 1000, 570));
  EXPECT_EQ(visibleFrameIn(screens, {1000, 0, 1200, 800}, 1), QRect(1000, 0, 1200, 760));
}

TEST(VisibleFrame, IsScaledAboutTheScreensCorner) {
  const std::vector screens = {screen({0, 0, 2000, 1600}, {0, 0, 2000, 1540}), screen({2000, 0, 2000, 1600}, {2000, 0, 2000, 1540})};
  EXPECT_EQ(visibleFrameIn(screens, {2000, 0, 1000, 800}, 2), QRect(2000, 30, 1000, 770));
}

TEST(VisibleFrame, OfAScreenThatTheDesktopDoesNotKnowIsAllOfIt) {
  EXPECT_EQ(visibleFrameIn({}, {10, 20, 300, 200}, 1), QRect(10, 20, 300, 200));
}

}  // namespace
}  // namespace tilora::app
