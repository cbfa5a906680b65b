// The shape of the rounded rectangles.
#include "app/ui/surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tilora::app {
namespace {

constexpr QRectF area = {0, 0, 200, 100};
constexpr double radius = 12;

TEST(RoundedRectangle, FillsItsArea) {
  for (const bool continuous : {false, true}) EXPECT_EQ(roundedRectangle(area, radius, continuous).boundingRect(), area);
}

TEST(RoundedRectangle, CutsEachCornerWhereACircleOfItsRadiusDoes) {
  const double cut = radius * (1 - std::numbers::sqrt2 / 2);
  for (const bool continuous : {false, true}) {
    const QPainterPath path = roundedRectangle(area, radius, continuous);
    EXPECT_FALSE(path.contains({cut - 0.05, cut - 0.05}));
    EXPECT_TRUE(path.contains({cut + 0.05, cut + 0.05}));
    EXPECT_FALSE(path.contains({area.right() - cut + 0.05, area.bottom() - cut + 0.05}));
    EXPECT_TRUE(path.contains({area.right() - cut - 0.05, area.bottom() - cut - 0.05}));
  }
}

TEST(RoundedRectangle, AContinuousCornerBeginsFurtherOutOnItsSide) {
  const auto cornerBegins = [](bool continuous) { return roundedRectangle(area, radius, continuous).elementAt(0).x; };
  EXPECT_DOUBLE_EQ(cornerBegins(false), radius);
  EXPECT_GT(cornerBegins(true), 1.5 * radius);
}

TEST(RoundedRectangle, OfHalfTheHeightIsACapsule) {
  const QPainterPath capsule = roundedRectangle(area, 1000, false);
  EXPECT_EQ(capsule.boundingRect(), area);
  EXPECT_FALSE(capsule.contains({50 - 50 * 0.72, 50 - 50 * 0.72}));
  EXPECT_TRUE(capsule.contains({50 - 50 * 0.70, 50 - 50 * 0.70}));
}

}  // namespace
}  // namespace tilora::app
