// Which screen a window is on, and what screens are called.
#include "windows/screen_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/desktops.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using test::elementOf;
using test::screenNumbered;
using test::windowOn;
using testing::ElementsAre;
using testing::IsEmpty;

/// The place in the list of the screen that a window with this frame is on.
std::optional<std::size_t> screenIndexFor(simulated::DesktopBuilder& builder, Rect windowFrame) {
  const auto desktop = builder.app(100).window(1, {.frame = windowFrame}).build();
  const auto screen = screenOf(*elementOf(*desktop, 100), desktop->screens());
  const auto& all = desktop->screens().screens();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i] == screen) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> screenIndexFor(simulated::DesktopBuilder&& builder, Rect windowFrame) {
  return screenIndexFor(builder, windowFrame);
}

/// A low screen on the left and a high one on the right; the top edge is 1200.
simulated::DesktopBuilder lowAndHigh() {
  auto builder = simulated::desktop();
  builder.screen(1, {0, 0, 1440, 900}, {0, 0, 1440, 900}).screen(2, {1440, 0, 1920, 1200}, {1440, 0, 1920, 1200});
  return builder;
}

TEST(ScreenOfAWindow, IsTheOneThatContainsItsCentre) {
  EXPECT_EQ(screenIndexFor(lowAndHigh(), {1300, 400, 200, 100}), 0);
  EXPECT_EQ(screenIndexFor(lowAndHigh(), {1400, 400, 200, 100}), 1);
}

TEST(ScreenOfAWindow, ReckonsFromTheTopEdgeOfTheHighestScreen) {
  auto upper = simulated::desktop();
  upper.screen(1, {0, 0, 1000, 1000}, {0, 0, 1000, 1000}).screen(2, {0, 1000, 1000, 500}, {0, 1000, 1000, 500});

  EXPECT_EQ(screenIndexFor(upper, {100, 100, 100, 100}), 1);
}

TEST(ScreenOfAWindow, AnEdgeBelongsToTheScreenThatBeginsThere) {
  EXPECT_EQ(screenIndexFor(lowAndHigh(), {1340, 400, 200, 100}), 1);
  // The upper edge of the left screen is no part of it; there is nothing above it, so that the main screen, the second here, counts.
  const auto desktop = lowAndHigh().app(100).window(1, {.frame = {100, 250, 100, 100}}).build();
  desktop->screens().setMain(2);
  EXPECT_EQ(screenOf(*elementOf(*desktop, 100), desktop->screens()), desktop->screens().screens().at(1));
}

TEST(ScreenOfAWindow, OfTwoMirroredScreensTheFirstCounts) {
  auto mirrored = simulated::desktop();
  mirrored.screen(1, {0, 0, 100, 100}, {0, 0, 100, 100}).screen(2, {0, 0, 100, 100}, {0, 0, 100, 100});

  EXPECT_EQ(screenIndexFor(mirrored, {10, 10, 10, 10}), 0);
}

TEST(ScreenOfAWindow, IsTheMainScreenWhenItsCentreIsOnNone) {
  const auto desktop = lowAndHigh().app(100).window(1, {.frame = {0, 9000, 100, 100}}).build();
  desktop->screens().setMain(2);

  EXPECT_EQ(screenOf(*elementOf(*desktop, 100), desktop->screens()), desktop->screens().screens().at(1));
}

class ScreenOfAnUnreadableWindow : public testing::TestWithParam<AttributeName> {
 protected:
  std::unique_ptr<simulated::SimulatedDesktop> desktop_ = lowAndHigh().app(100).window(1).attribute(GetParam(), std::nullopt).build();
  ScreenRef screen() { return screenOf(*elementOf(*desktop_, 100), desktop_->screens()); }
};

TEST_P(ScreenOfAnUnreadableWindow, IsTheMainScreen) {
  desktop_->screens().setMain(2);
  EXPECT_EQ(screen(), desktop_->screens().screens().at(1));
}

TEST_P(ScreenOfAnUnreadableWindow, IsTheFirstScreenWhenThereIsNoMainScreen) {
  desktop_->screens().setMain(std::nullopt);
  EXPECT_EQ(screen(), desktop_->screens().screens().at(0));
}

TEST_P(ScreenOfAnUnreadableWindow, IsAbsentWithoutScreens) {
  desktop_->screens().remove(1);
  desktop_->screens().remove(2);
  EXPECT_EQ(screen(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Geometry, ScreenOfAnUnreadableWindow, testing::Values(AttributeName::position, AttributeName::size),
                         [](const auto& row) { return std::string(text(row.param)); });

struct KeyCase {
  std::string name;
  Rect frame;
  std::optional<std::uint64_t> number;
  std::string key;
};

class ScreenKeys : public testing::TestWithParam<KeyCase> {};

TEST_P(ScreenKeys, NameTheDisplayOrElseTheFrame) {
  EXPECT_EQ(screenKey({GetParam().frame, GetParam().frame, GetParam().number}), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenKeys,
                         testing::Values(KeyCase{"Number", {0, 0, 1512, 982}, 1, "display:1"},
                                         KeyCase{"NumberZero", {0, 0, 1512, 982}, 0, "display:0"},
                                         KeyCase{"LargestNumber", {0, 0, 1512, 982}, 4294967295U, "display:4294967295"},
                                         KeyCase{"NumberBeyond32Bits", {0, 0, 1512, 982}, (std::uint64_t{1} << 32) + 5, "display:5"},
                                         KeyCase{"Frame", {0, 0, 1512, 982}, std::nullopt, "frame:0:0:1512:982"},
                                         KeyCase{"RoundedOutwards", {-1920.4, 0.5, 1920, 1080}, std::nullopt, "frame:-1921:0:1921:1081"},
                                         KeyCase{"NegativeZero", {-0.0, -0.0, 10, 10}, std::nullopt, "frame:0:0:10:10"}),
                         test::caseName);

class ScreenKeyDeathTest : public testing::TestWithParam<double> {};

TEST_P(ScreenKeyDeathTest, AFrameThatIsNotInWholeNumbersIsFatal) {
  for (const Rect frame :
       {Rect{GetParam(), 0, 10, 10}, Rect{0, GetParam(), 10, 10}, Rect{0, 0, GetParam(), 10}, Rect{0, 0, 10, GetParam()}}) {
    EXPECT_DEATH(screenKey({frame, frame, std::nullopt}), "");
  }
}

INSTANTIATE_TEST_SUITE_P(Coordinates, ScreenKeyDeathTest,
                         testing::Values(std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity(), 1e19, -1e19));

TEST(ScreenKeys, AFrameThatCannotBeToldMattersOnlyWithoutANumber) {
  EXPECT_EQ(screenKey({{std::numeric_limits<double>::infinity(), 0, 10, 10}, {}, 3}), "display:3");
}

std::vector<std::vector<WindowKey>> keysOf(const std::vector<ScreenGroup>& groups) {
  std::vector<std::vector<WindowKey>> keys;
  for (const auto& group : groups) {
    keys.emplace_back();
    for (const auto* window : group.windows) keys.back().push_back(window->key);
  }
  return keys;
}

TEST(GroupsByScreen, KeepTheOrderOfTheirWindows) {
  const auto first = screenNumbered(1);
  const auto second = screenNumbered(2);
  const std::vector<ManagedWindow> windows = {windowOn(second, {1, 1}), windowOn(first, {2, 2}), windowOn(second, {3, 3}),
                                              windowOn(first, {1, 4})};

  const auto groups = groupByScreen(windows);

  ASSERT_EQ(groups.size(), 2);
  EXPECT_EQ(groups[0].key, "display:2");
  EXPECT_EQ(groups[1].key, "display:1");
  EXPECT_THAT(keysOf(groups), ElementsAre(ElementsAre(WindowKey{1, 1}, WindowKey{3, 3}), ElementsAre(WindowKey{2, 2}, WindowKey{1, 4})));
}

TEST(GroupsByScreen, ScreensOfEqualFramesWithoutNumbersAreOne) {
  const auto exact = std::make_shared<const Screen>(Screen{{0, 0, 100, 100}, {}, std::nullopt});
  const auto rounded = std::make_shared<const Screen>(Screen{{0.25, 0.25, 99.5, 99.5}, {}, std::nullopt});
  const std::vector<ManagedWindow> windows = {windowOn(exact, {1, 1}), windowOn(rounded, {1, 2}), windowOn(exact, {1, 3})};

  const auto groups = groupByScreen(windows);

  ASSERT_EQ(groups.size(), 1);
  EXPECT_EQ(groups[0].key, "frame:0:0:100:100");
  EXPECT_THAT(keysOf(groups), ElementsAre(ElementsAre(WindowKey{1, 1}, WindowKey{1, 2}, WindowKey{1, 3})));
}

TEST(GroupsByScreen, WithoutWindowsThereAreNone) { EXPECT_THAT(groupByScreen({}), IsEmpty()); }

}  // namespace
}  // namespace tilora
