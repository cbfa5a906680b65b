// What putting one window into its placement writes to it.
#include "tiling/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::moved;
using simulated::resized;
using simulated::Settability;
using simulated::SimulatedDesktop;
using testing::ElementsAre;
using testing::IsEmpty;
using enum WindowPlacement;

/// The only window of application 100, as a pass would hand it on.
ManagedWindow onlyWindow(SimulatedDesktop& desktop) {
  auto window = test::windowOn(desktop.screens().screens().front(), {100, 1});
  window.window = test::elementOf(desktop, 100);
  return window;
}

std::vector<simulated::Effect> place(SimulatedDesktop& desktop, WindowPlacement placement) {
  applyPlacement(placement, onlyWindow(desktop), test::gap, desktop.interfaces());
  return desktop.takeEffects();
}

std::vector<simulated::Effect> placeFloating(SimulatedDesktop& desktop) {
  applyFloatCenter(onlyWindow(desktop), test::gap, desktop.interfaces());
  return desktop.takeEffects();
}

auto resizableWindow() { return test::laptop().app(100).window(1).build(); }
auto fixedWindow(Size size) {
  return test::laptop().app(100).window(1, {.frame = {50, 60, size.width, size.height}, .resizable = false}).build();
}

TEST(Layout, AResizableWindowGetsTheFrameOfItsPlacement) {
  const auto desktop = resizableWindow();

  EXPECT_THAT(place(*desktop, full), ElementsAre(moved(1, 10, 35), resized(1, 1420, 855)));
  EXPECT_THAT(place(*desktop, left), ElementsAre(moved(1, 10, 35), resized(1, 705, 855)));
  EXPECT_THAT(place(*desktop, right), ElementsAre(moved(1, 725, 35), resized(1, 705, 855)));
}

TEST(Layout, AFloatingWindowIsNotTouched) {
  EXPECT_THAT(place(*resizableWindow(), floatCenter), IsEmpty());
  EXPECT_THAT(place(*fixedWindow({500, 400}), floatCenter), IsEmpty());
}

TEST(Layout, TheFloatingCommandWritesTheFloatingFrame) {
  EXPECT_THAT(placeFloating(*resizableWindow()), ElementsAre(moved(1, 294, 77.75), resized(1, 852, 769.5)));
}

TEST(Layout, TheFloatingCommandCentresAWindowOfFixedSize) {
  EXPECT_THAT(placeFloating(*fixedWindow({500, 400})), ElementsAre(moved(1, 470, 262.5)));
}

TEST(Layout, AWindowThatIsAlreadyThereIsWrittenAgain) {
  const auto desktop = resizableWindow();
  place(*desktop, left);

  EXPECT_THAT(place(*desktop, left), ElementsAre(moved(1, 10, 35), resized(1, 705, 855)));
}

TEST(Layout, AWindowOfFixedSizeIsOnlyMoved) { EXPECT_THAT(place(*fixedWindow({500, 400}), left), ElementsAre(moved(1, 112.5, 262.5))); }

TEST(Layout, AWindowThatIsTooWideIsMovedToTheLeftEdge) {
  for (const auto placement : {full, left, right}) {
    EXPECT_THAT(place(*fixedWindow({2000, 400}), placement), ElementsAre(moved(1, 10, 262.5))) << text(placement);
  }
}

TEST(Layout, AWindowThatDoesNotTellWhetherItCanBeResizedIsOnlyMoved) {
  const auto desktop = resizableWindow();
  desktop->setSettable(1, AttributeName::size, Settability::error);

  EXPECT_THAT(place(*desktop, full), ElementsAre(moved(1, 520, 312.5)));
}

TEST(Layout, AFixedWindowOfUnknownSizeGoesByTheWindowServer) {
  const auto desktop = test::laptop()
                           .app(100)
                           .window(1, {.resizable = false, .server = WindowServerEntry{100, Rect{0, 0, 500, 400}}})
                           .attribute(AttributeName::size, std::nullopt)
                           .build();

  EXPECT_THAT(place(*desktop, left), ElementsAre(moved(1, 112.5, 262.5)));
}

TEST(Layout, AFixedWindowWithoutAnySizeIsLeftWhereItIs) {
  const auto desktop = fixedWindow({500, 400});
  desktop->setAttribute(1, AttributeName::size, std::nullopt);

  EXPECT_THAT(place(*desktop, left), IsEmpty());
}

TEST(Layout, AFixedWindowOfNegativeSizeIsLeftWhereItIs) { EXPECT_THAT(place(*fixedWindow({-500, 400}), left), IsEmpty()); }

TEST(Layout, AFixedWindowIsLeftWhereItIsWhenTheGapLeavesNoRoom) {
  const auto desktop = fixedWindow({500, 400});

  applyPlacement(full, onlyWindow(*desktop), 440, desktop->interfaces());

  EXPECT_THAT(desktop->takeEffects(), IsEmpty());
}

TEST(Layout, AResizableWindowGetsEvenANegativeFrame) {
  const auto desktop = resizableWindow();

  applyPlacement(full, onlyWindow(*desktop), 800, desktop->interfaces());

  EXPECT_THAT(desktop->takeEffects(), ElementsAre(moved(1, 800, 825), resized(1, -160, -725)));
}

TEST(Layout, NothingIsWrittenWhenAValueCannotBeBoxed) {
  const auto resizable = resizableWindow();
  const auto fixed = fixedWindow({500, 400});
  resizable->setBoxing(true, false);
  fixed->setBoxing(false, true);

  EXPECT_THAT(place(*resizable, left), IsEmpty());
  EXPECT_THAT(place(*fixed, left), IsEmpty());
}

TEST(Layout, PositionsCountFromTheTopEdgeOfTheHighestScreen) {
  const auto desktop = resizableWindow();
  desktop->screens().set(2, Screen{{1440, 0, 1920, 1200}, {1440, 0, 1920, 1175}, 2});

  // The frame ends at 865, and the highest screen at 1200.
  EXPECT_THAT(place(*desktop, full), ElementsAre(moved(1, 10, 335), resized(1, 1420, 855)));
}

}  // namespace
}  // namespace tilora
