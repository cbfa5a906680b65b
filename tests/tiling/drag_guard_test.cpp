// When the user counts as dragging a tiled window.
#include "tiling/drag_guard.h"

#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using enum WindowPlacement;

constexpr WindowKey key = {100, 1};
constexpr std::uint64_t primary = 1;
constexpr std::uint64_t secondary = 2;

class DragGuard : public testing::Test {
 protected:
  bool isDragging() {
    const auto interfaces = desktop_->interfaces();
    return isDraggingTiledWindow(interfaces.pointer, focusedWindow(interfaces), memory_);
  }

  std::unique_ptr<simulated::SimulatedDesktop> desktop_ = test::laptop().app(100).window(1).front(100, 1).build();
  PlacementMemory memory_;
};

TEST_F(DragGuard, AWindowWithoutAPlacementCountsAsTiled) {
  desktop_->pointer().buttons = primary;

  EXPECT_TRUE(isDragging());
}

TEST_F(DragGuard, EachTiledPlacementCounts) {
  desktop_->pointer().buttons = primary | secondary;

  for (const auto placement : {full, left, right}) {
    memory_.setPlacement(key, placement);
    EXPECT_TRUE(isDragging()) << text(placement);
  }
}

TEST_F(DragGuard, AFloatingWindowMayBeDragged) {
  desktop_->pointer().buttons = primary;
  memory_.setPlacement(key, floatCenter);

  EXPECT_FALSE(isDragging());
}

TEST_F(DragGuard, OnlyThePrimaryButtonDrags) {
  EXPECT_FALSE(isDragging());
  desktop_->pointer().buttons = secondary;
  EXPECT_FALSE(isDragging());
}

TEST_F(DragGuard, WithoutAFocusedWindowNothingIsDragged) {
  desktop_->pointer().buttons = primary;
  desktop_->setFrontmost(std::nullopt);

  EXPECT_FALSE(isDragging());
}

TEST_F(DragGuard, ADialogIsNotTiled) {
  desktop_->pointer().buttons = primary;
  desktop_->setAttribute(1, AttributeName::subrole, std::string("AXDialog"));

  EXPECT_FALSE(isDragging());
}

}  // namespace
}  // namespace tilora
