// What panels leave of each monitor, and the monitors as screens of the engine.
#include "platform/x11/monitors.h"

#include <gtest/gtest.h>

#include "bare_server.h"

namespace tilora::x11 {
namespace {

constexpr int farEnd = 32767;

/// Two monitors side by side: the root window is 3200 x 1080, the right one is smaller and stands on the same upper edge.
const Monitor leftMonitor{{0, 0, 1920, 1080}, true, 11};
const Monitor rightMonitor{{1920, 0, 1280, 1024}, false, 12};
constexpr PixelRect root{0, 0, 3200, 1080};

Strut atLeft(int width, int start = 0, int end = farEnd) {
  Strut strut;
  strut.left = width;
  strut.leftStart = start;
  strut.leftEnd = end;
  return strut;
}

Strut atRight(int width, int start = 0, int end = farEnd) {
  Strut strut;
  strut.right = width;
  strut.rightStart = start;
  strut.rightEnd = end;
  return strut;
}

Strut atTop(int height, int start = 0, int end = farEnd) {
  Strut strut;
  strut.top = height;
  strut.topStart = start;
  strut.topEnd = end;
  return strut;
}

Strut atBottom(int height, int start = 0, int end = farEnd) {
  Strut strut;
  strut.bottom = height;
  strut.bottomStart = start;
  strut.bottomEnd = end;
  return strut;
}

PixelRect freeOnLeft(const std::vector<Strut>& struts) { return withoutStruts(leftMonitor, struts, root); }
PixelRect freeOnRight(const std::vector<Strut>& struts) { return withoutStruts(rightMonitor, struts, root); }

TEST(Struts, WithoutPanelsAllOfAMonitorIsFree) {
  EXPECT_EQ(freeOnLeft({}), leftMonitor.frame);
  EXPECT_EQ(freeOnRight({}), rightMonitor.frame);
  EXPECT_EQ(freeOnLeft({Strut{}}), leftMonitor.frame);
}

TEST(Struts, APanelOnAnOuterEdgeTakesItsWidth) {
  EXPECT_EQ(freeOnLeft({atLeft(40, 0, 1079)}), (PixelRect{40, 0, 1880, 1080}));
  EXPECT_EQ(freeOnLeft({atTop(30, 0, 1919)}), (PixelRect{0, 30, 1920, 1050}));
  EXPECT_EQ(freeOnLeft({atBottom(48, 0, 1919)}), (PixelRect{0, 0, 1920, 1032}));
  EXPECT_EQ(freeOnRight({atRight(50, 0, 1023)}), (PixelRect{1920, 0, 1230, 1024}));
}

TEST(Struts, APanelTakesNothingFromTheMonitorBesideItsOwn) {
  EXPECT_EQ(freeOnRight({atTop(30, 0, 1919)}), rightMonitor.frame);
  EXPECT_EQ(freeOnLeft({atTop(30, 1920, 3199)}), leftMonitor.frame);
  EXPECT_EQ(freeOnRight({atLeft(40, 0, 1079)}), rightMonitor.frame);
  EXPECT_EQ(freeOnLeft({atRight(50, 0, 1079)}), leftMonitor.frame);
}

TEST(Struts, APanelOnAnInnerEdgeCrossesOneMonitorAndEndsOnTheOther) {
  EXPECT_EQ(freeOnRight({atLeft(1920 + 40, 0, 1023)}), (PixelRect{1960, 0, 1240, 1024}));
  EXPECT_EQ(freeOnLeft({atLeft(1920 + 40, 0, 1023)}), leftMonitor.frame);
  EXPECT_EQ(freeOnLeft({atRight(1280 + 60, 0, 1079)}), (PixelRect{0, 0, 1860, 1080}));
  EXPECT_EQ(freeOnRight({atRight(1280 + 60, 0, 1079)}), rightMonitor.frame);
}

TEST(Struts, APanelAtTheBottomOfAShorterMonitorIsMeasuredFromTheRootsEdge) {
  constexpr int belowTheMonitor = 1080 - 1024;
  EXPECT_EQ(freeOnRight({atBottom(belowTheMonitor + 32, 1920, 3199)}), (PixelRect{1920, 0, 1280, 992}));
  EXPECT_EQ(freeOnLeft({atBottom(belowTheMonitor + 32, 1920, 3199)}), leftMonitor.frame);
}

TEST(Struts, APanelThatOnlyReachesTheMonitorsEdgeTakesNothing) {
  EXPECT_EQ(freeOnRight({atLeft(1920, 0, 1023)}), rightMonitor.frame);
  EXPECT_EQ(freeOnRight({atBottom(1080 - 1024, 1920, 3199)}), rightMonitor.frame);
}

TEST(Struts, APanelOnBothMonitorsTakesFromBoth) {
  EXPECT_EQ(freeOnLeft({atTop(30)}), (PixelRect{0, 30, 1920, 1050}));
  EXPECT_EQ(freeOnRight({atTop(30)}), (PixelRect{1920, 30, 1280, 994}));
}

TEST(Struts, OfTwoPanelsOnOneEdgeTheWiderCountsAndPanelsOnDifferentEdgesAddUp) {
  EXPECT_EQ(freeOnLeft({atTop(30, 0, 900), atTop(50, 901, 1919)}), (PixelRect{0, 50, 1920, 1030}));
  EXPECT_EQ(freeOnLeft({atTop(30), atBottom(48), atLeft(10)}), (PixelRect{10, 30, 1910, 1002}));
}

TEST(Struts, TheEndsOfARangeBelongToIt) {
  EXPECT_EQ(freeOnRight({atTop(30, 0, 1920)}), (PixelRect{1920, 30, 1280, 994}));
  EXPECT_EQ(freeOnLeft({atTop(30, 1919, 3199)}), (PixelRect{0, 30, 1920, 1050}));
}

TEST(Struts, APanelThatWouldLeaveNothingIsNotBelieved) {
  EXPECT_EQ(freeOnLeft({atTop(1080, 0, 1919)}), leftMonitor.frame);
  EXPECT_EQ(freeOnLeft({atTop(farEnd), atBottom(farEnd), atLeft(farEnd), atRight(farEnd)}), leftMonitor.frame);
}

TEST(Struts, APanelThatIsNotBelievedTakesNothingFromTheOthers) {
  const Strut panel = atTop(30, 0, 1919);
  EXPECT_EQ(freeOnLeft({atTop(1080, 0, 1919), panel}), (PixelRect{0, 30, 1920, 1050}));
  EXPECT_EQ(freeOnLeft({panel, atTop(1080, 0, 1919)}), (PixelRect{0, 30, 1920, 1050}));
}

TEST(Struts, OfPanelsThatTogetherLeaveNothingTheFirstIsBelieved) {
  EXPECT_EQ(freeOnLeft({atLeft(1000, 0, 1079), atRight(1280 + 1000, 0, 1079)}), (PixelRect{1000, 0, 920, 1080}));
}

TEST(Struts, MonitorsAboveEachOtherKeepTheirOwnPanels) {
  const Monitor upper{{0, 0, 1920, 1080}, false, 21};
  const Monitor lower{{320, 1080, 1280, 720}, true, 22};
  constexpr PixelRect tall{0, 0, 1920, 1800};
  const Strut innerPanel = atTop(1080 + 24, 320, 1599);
  EXPECT_EQ(withoutStruts(lower, {innerPanel}, tall), (PixelRect{320, 1104, 1280, 696}));
  EXPECT_EQ(withoutStruts(upper, {innerPanel}, tall), upper.frame);
  const Strut upperBottom = atBottom(720 + 40, 0, 1919);
  EXPECT_EQ(withoutStruts(upper, {upperBottom}, tall), (PixelRect{0, 0, 1920, 1040}));
  EXPECT_EQ(withoutStruts(lower, {upperBottom}, tall), lower.frame);
}

TEST(ScreenLayout, ScreensAreFlippedAboutTheLowestEdge) {
  ScreenLayout layout;
  EXPECT_TRUE(layout.update({leftMonitor, rightMonitor}, {atTop(30, 0, 1919)}, root, {}));
  ASSERT_EQ(layout.screens().size(), 2U);
  EXPECT_EQ(layout.screens()[0]->frame, (Rect{0, 0, 1920, 1080}));
  EXPECT_EQ(layout.screens()[0]->visibleFrame, (Rect{0, 0, 1920, 1050}));
  EXPECT_EQ(layout.screens()[0]->number, 11U);
  EXPECT_EQ(layout.screens()[1]->frame, (Rect{1920, 56, 1280, 1024}));
  EXPECT_EQ(layout.screens()[1]->number, 12U);
  EXPECT_EQ(layout.top(), 0);
}

TEST(ScreenLayout, AScreenThatDoesNotChangeKeepsItsObject) {
  ScreenLayout layout;
  layout.update({leftMonitor, rightMonitor}, {}, root, {});
  const auto before = layout.screens();
  EXPECT_FALSE(layout.update({leftMonitor, rightMonitor}, {}, root, {}));
  EXPECT_EQ(layout.screens(), before);
  EXPECT_TRUE(layout.update({leftMonitor, rightMonitor}, {atTop(30, 0, 1919)}, root, {}));
  EXPECT_NE(layout.screens()[0], before[0]);
  EXPECT_EQ(layout.screens()[1], before[1]);
}

TEST(ScreenLayout, AMonitorThatComesOrGoesIsAChange) {
  ScreenLayout layout;
  EXPECT_TRUE(layout.update({leftMonitor}, {}, root, {}));
  EXPECT_TRUE(layout.update({leftMonitor, rightMonitor}, {}, root, {}));
  EXPECT_TRUE(layout.update({leftMonitor}, {}, root, {}));
  EXPECT_EQ(layout.screens().size(), 1U);
}

TEST(ScreenLayout, AnotherOutputInTheSamePlaceIsAnotherScreen) {
  ScreenLayout layout;
  layout.update({leftMonitor}, {}, root, {});
  Monitor replaced = leftMonitor;
  replaced.output = 99;
  EXPECT_TRUE(layout.update({replaced}, {}, root, {}));
  EXPECT_EQ(layout.screens()[0]->number, 99U);
}

TEST(ScreenLayout, WithOneMonitorTheWorkAreaCountsAndWithTwoItDoesNot) {
  constexpr PixelRect withoutTaskBar{0, 0, 1920, 1050};
  ScreenLayout one;
  one.update({leftMonitor}, {}, leftMonitor.frame, withoutTaskBar);
  EXPECT_EQ(one.visibleFrames()[0], withoutTaskBar);
  ScreenLayout two;
  two.update({leftMonitor, rightMonitor}, {}, root, withoutTaskBar);
  EXPECT_EQ(two.visibleFrames()[0], leftMonitor.frame);
}

TEST(ScreenLayout, AWorkAreaThatMakesNoSenseIsIgnored) {
  ScreenLayout layout;
  for (const PixelRect area : {PixelRect{0, 0, 0, 0}, PixelRect{5000, 5000, 100, 100}, PixelRect{0, 0, -5, -5}}) {
    layout.update({leftMonitor}, {}, leftMonitor.frame, area);
    EXPECT_EQ(layout.visibleFrames()[0], leftMonitor.frame);
  }
}

TEST(ScreenLayout, APointBelongsToTheMonitorThatHoldsIt) {
  ScreenLayout layout;
  layout.update({leftMonitor, rightMonitor}, {}, root, {});
  EXPECT_EQ(layout.monitorAt(0, 0), 0U);
  EXPECT_EQ(layout.monitorAt(1919, 1079), 0U);
  EXPECT_EQ(layout.monitorAt(1920, 0), 1U);
  EXPECT_EQ(layout.monitorAt(1920, 1050), std::nullopt);
  EXPECT_EQ(layout.monitorAt(-1, 0), std::nullopt);
}

class MonitorsTest : public testing::Test {
 public:
  BareServer bare;
};

TEST_F(MonitorsTest, AServerWithOneOutputHasOneMonitor) {
  const auto monitors = readMonitors(*bare.connection);
  ASSERT_EQ(monitors.size(), 1U);
  EXPECT_EQ(monitors[0].frame, readRootFrame(*bare.connection));
  EXPECT_TRUE(monitors[0].output);
}

TEST_F(MonitorsTest, ThePrimaryMonitorComesFirst) {
  ASSERT_TRUE(bare.run({"xrandr", "--setmonitor", "left", "800/200x900/200+0+0", "screen"}));
  ASSERT_TRUE(bare.run({"xrandr", "--setmonitor", "*right", "800/200x900/200+800+0", "none"}));
  const auto monitors = readMonitors(*bare.connection);
  ASSERT_EQ(monitors.size(), 2U);
  EXPECT_EQ(monitors[0].frame, (PixelRect{800, 0, 800, 900}));
  EXPECT_TRUE(monitors[0].primary);
  EXPECT_EQ(monitors[1].frame, (PixelRect{0, 0, 800, 900}));
}

TEST_F(MonitorsTest, WithoutAnAnswerTheRootWindowIsTheOneMonitor) {
  bare.server.process().terminate();
  const auto monitors = readMonitors(*bare.connection);
  ASSERT_EQ(monitors.size(), 1U);
  EXPECT_EQ(monitors[0].frame, (PixelRect{0, 0, 1600, 900}));
}

}  // namespace
}  // namespace tilora::x11
