// How rectangles turn over between windows, which count downwards, and screens, which count upwards.
#include "windows/coordinates.h"

#include <gtest/gtest.h>

#include <memory>

namespace tilora {
namespace {

ScreenRef screenWith(Rect frame) { return std::make_shared<const Screen>(Screen{frame, frame, std::nullopt}); }

TEST(TopEdge, IsTheLargestOfAllScreensWhateverTheirOrder) {
  const auto low = screenWith({0, 0, 1920, 1080});
  const auto high = screenWith({1920, 240, 1920, 1200});

  EXPECT_EQ(topEdge({low, high}), 1440);
  EXPECT_EQ(topEdge({high, low}), 1440);
}

TEST(TopEdge, IsZeroWithoutScreens) { EXPECT_EQ(topEdge({}), 0); }

TEST(TopEdge, CanBeNegative) { EXPECT_EQ(topEdge({screenWith({0, -2000, 1920, 1080})}), -920); }

TEST(Coordinates, AWindowBelowTheTopEdgeIsMeasuredFromTheBottom) {
  EXPECT_EQ(screenRect({50, 60, 400, 300}, 900), (Rect{50, 540, 400, 300}));
  EXPECT_EQ(screenRect({50, -360, 400, 300}, 900), (Rect{50, 960, 400, 300}));
}

TEST(Coordinates, TheWayBackLeadsToTheSamePosition) {
  EXPECT_EQ(windowPosition(screenRect({50, 60, 400, 300}, 900), 900), (Point{50, 60}));
}

TEST(Coordinates, ARectangleThatEndsAt900IsWrittenAt300BelowATopEdgeOf1200) {
  const double top = topEdge({screenWith({0, 0, 1440, 900}), screenWith({1440, 0, 1920, 1200})});

  EXPECT_EQ(windowPosition({10, 500, 700, 400}, top), (Point{10, 300}));
}

}  // namespace
}  // namespace tilora
