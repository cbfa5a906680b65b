// From the coordinates of macOS screens to Qt's.
#include "app/mac_coordinates.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tilora::app {
namespace {

ScreenRef screenAt(Rect frame) { return std::make_shared<const Screen>(Screen{frame, frame, std::nullopt}); }

TEST(MacCoordinates, APlaceIsMeasuredFromTheTopOfTheFirstScreen) {
  const std::vector screens = {screenAt({0, 0, 1440, 900}), screenAt({1440, -200, 2560, 1440})};
  EXPECT_EQ(placeInQt({1300, 876, 33, 24}, screens), QRect(1300, 0, 33, 24));
  EXPECT_EQ(placeInQt({2000, 1216, 33, 24}, screens), QRect(2000, -340, 33, 24));
}

TEST(MacCoordinates, APlaceBetweenPointsGrowsToWholeOnes) {
  EXPECT_EQ(placeInQt({10.5, 880, 20, 20}, {screenAt({0, 0, 1440, 900})}), QRect(10, 0, 21, 20));
}

TEST(MacCoordinates, WithoutScreensAPlaceIsAtTheTop) { EXPECT_EQ(placeInQt({10, 20, 30, 40}, {}), QRect(10, 0, 30, 40)); }

}  // namespace
}  // namespace tilora::app
