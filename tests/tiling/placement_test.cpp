// The stored names of placements, and where each one is on a screen.
#include "tiling/placement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/desktops.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using enum WindowPlacement;
using test::gap;
using test::laptopVisible;

constexpr auto nan = std::numeric_limits<double>::quiet_NaN();

TEST(PlacementNames, AreReadBackExactly) {
  EXPECT_EQ(text(full), "full");
  EXPECT_EQ(text(left), "left");
  EXPECT_EQ(text(right), "right");
  EXPECT_EQ(text(floatCenter), "floatCenter");
  for (const auto placement : {full, left, right, floatCenter}) EXPECT_EQ(placementFrom(text(placement)), placement);
}

TEST(PlacementNames, NothingElseIsAPlacement) {
  for (const auto* other : {"", "Left", "LEFT", "center", "floatcenter", "left ", " left", "lef"}) {
    EXPECT_EQ(placementFrom(other), std::nullopt) << other;
  }
}

TEST(OppositePlacement, IsTheOtherHalf) {
  EXPECT_EQ(oppositeOf(left), right);
  EXPECT_EQ(oppositeOf(right), left);
  EXPECT_EQ(oppositeOf(full), std::nullopt);
  EXPECT_EQ(oppositeOf(floatCenter), std::nullopt);
}

struct FrameCase {
  std::string name;
  WindowPlacement placement;
  Rect visible;
  double padding;
  Rect frame;
};

class PlacementFrame : public testing::TestWithParam<FrameCase> {};

TEST_P(PlacementFrame, IsPlainArithmeticOnTheVisibleFrame) {
  EXPECT_EQ(frameForPlacement(GetParam().placement, GetParam().visible, GetParam().padding), GetParam().frame);
}

INSTANTIATE_TEST_SUITE_P(
    Screens, PlacementFrame,
    testing::Values(FrameCase{"Full", full, laptopVisible, gap, {10, 10, 1420, 855}},
                    FrameCase{"Left", left, laptopVisible, gap, {10, 10, 705, 855}},
                    FrameCase{"Right", right, laptopVisible, gap, {725, 10, 705, 855}},
                    FrameCase{"FloatCenter", floatCenter, laptopVisible, gap, {294, 52.75, 852, 769.5}},
                    FrameCase{"FullWithoutGap", full, laptopVisible, 0, {0, 0, 1440, 875}},
                    FrameCase{"LeftWithoutGap", left, laptopVisible, 0, {0, 0, 720, 875}},
                    FrameCase{"RightWithoutGap", right, laptopVisible, 0, {720, 0, 720, 875}},
                    FrameCase{"FullElsewhere", full, {-1920, 300, 1921, 1080}, 8, {-1912, 308, 1905, 1064}},
                    FrameCase{"LeftElsewhereIsNotRounded", left, {-1920, 300, 1921, 1080}, 8, {-1912, 308, 948.5, 1064}},
                    FrameCase{"RightElsewhereIsNotRounded", right, {-1920, 300, 1921, 1080}, 8, {-955.5, 308, 948.5, 1064}},
                    FrameCase{"FullBeyondHalfTheScreen", full, {0, 0, 100, 80}, 60, {60, 60, -20, -40}},
                    FrameCase{"LeftBeyondHalfTheScreen", left, {0, 0, 100, 80}, 60, {60, 60, 1, -40}},
                    FrameCase{"RightBeyondHalfTheScreen", right, {0, 0, 100, 80}, 60, {39, 60, 1, -40}},
                    FrameCase{"FloatCenterBeyondHalfTheScreen", floatCenter, {0, 0, 100, 80}, 60, {49.5, 39.5, 1, 1}}),
    test::caseName);

TEST(PlacementFrames, TheHalvesAreOneGapApart) {
  const Rect leftFrame = frameForPlacement(left, laptopVisible, gap);
  const Rect rightFrame = frameForPlacement(right, laptopVisible, gap);

  EXPECT_EQ(rightFrame.minX() - leftFrame.maxX(), gap);
  EXPECT_EQ(leftFrame.minX() - laptopVisible.minX(), gap);
  EXPECT_EQ(laptopVisible.maxX() - rightFrame.maxX(), gap);
}

TEST(PlacementFrames, AWidthThatIsNotANumberIsOnePoint) {
  EXPECT_EQ(frameForPlacement(left, {0, 0, nan, 100}, gap).width, 1);
  EXPECT_EQ(frameForPlacement(right, {0, 0, nan, 100}, gap).width, 1);
  EXPECT_EQ(frameForPlacement(floatCenter, {0, 0, nan, nan}, gap).width, 1);
  EXPECT_EQ(frameForPlacement(floatCenter, {0, 0, nan, nan}, gap).height, 1);
  EXPECT_TRUE(std::isnan(frameForPlacement(full, {0, 0, nan, 100}, gap).width));
}

struct FittedCase {
  std::string name;
  WindowPlacement placement;
  Rect visible;
  double padding;
  Size size;
  std::optional<Rect> frame;
};

class FittedFrame : public testing::TestWithParam<FittedCase> {};

TEST_P(FittedFrame, IsCentredOnThePlacementAndKeptInsideThePaddedArea) {
  const auto& fit = GetParam();
  EXPECT_EQ(fittedFrame(fit.placement, fit.visible, fit.padding, fit.size), fit.frame);
}

constexpr Rect smallScreen = {0, 0, 100, 80};

INSTANTIATE_TEST_SUITE_P(
    Windows, FittedFrame,
    testing::Values(FittedCase{"Left", left, laptopVisible, gap, {500, 400}, Rect{112.5, 237.5, 500, 400}},
                    FittedCase{"Right", right, laptopVisible, gap, {500, 400}, Rect{827.5, 237.5, 500, 400}},
                    FittedCase{"Full", full, laptopVisible, gap, {500, 400}, Rect{470, 237.5, 500, 400}},
                    FittedCase{"FloatCenter", floatCenter, laptopVisible, gap, {500, 400}, Rect{470, 237.5, 500, 400}},
                    FittedCase{"TooWideForTheLeftHalf", left, laptopVisible, gap, {1000, 400}, Rect{10, 237.5, 1000, 400}},
                    FittedCase{"TooWideForTheRightHalf", right, laptopVisible, gap, {1000, 400}, Rect{430, 237.5, 1000, 400}},
                    FittedCase{"TooWideFull", full, laptopVisible, gap, {2000, 400}, Rect{10, 237.5, 1420, 400}},
                    FittedCase{"TooWideLeft", left, laptopVisible, gap, {2000, 400}, Rect{10, 237.5, 1420, 400}},
                    FittedCase{"TooWideRight", right, laptopVisible, gap, {2000, 400}, Rect{10, 237.5, 1420, 400}},
                    FittedCase{"TooWideFloatCenter", floatCenter, laptopVisible, gap, {2000, 400}, Rect{10, 237.5, 1420, 400}},
                    FittedCase{"TooHigh", full, laptopVisible, gap, {500, 4000}, Rect{470, 10, 500, 855}},
                    FittedCase{"AsLargeAsThePaddedArea", left, laptopVisible, gap, {1420, 855}, Rect{10, 10, 1420, 855}},
                    FittedCase{"NoWidth", full, laptopVisible, gap, {0, 400}, std::nullopt},
                    FittedCase{"NegativeWidth", full, laptopVisible, gap, {-500, 400}, std::nullopt},
                    FittedCase{"NoHeight", full, laptopVisible, gap, {500, 0}, std::nullopt},
                    FittedCase{"NegativeHeight", full, laptopVisible, gap, {500, -400}, std::nullopt},
                    FittedCase{"HeightNotANumber", full, laptopVisible, gap, {500, nan}, std::nullopt},
                    FittedCase{"GapOfHalfTheScreen", full, smallScreen, 50, {10, 10}, std::nullopt},
                    FittedCase{"GapBeyondHalfTheScreen", full, smallScreen, 60, {10, 10}, std::nullopt}),
    test::caseName);

}  // namespace
}  // namespace tilora
