// The panel under the icon.
#include "platform/macos/panel.h"

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

constexpr std::uint64_t leftDown = 1U << 1;
constexpr std::uint64_t rightDown = 1U << 3;
constexpr std::uint64_t otherDown = 1U << 25;
constexpr std::uint64_t keyDown = 1U << 10;

class PanelTest : public ObjectiveCTest {};

TEST_F(PanelTest, APressInAPanelDoesNotActivateTheProgramAndItStaysOnEverySpace) {
  const auto view = fake::openWindow(true);
  makePanel(view);
  EXPECT_EQ(fake::setupOf(view), (fake::WindowSetup{1U << 7, (1U << 0) | (1U << 3) | (1U << 8), 101, false, true}));
}

TEST_F(PanelTest, ASystemThatDoesNotKnowTheMethodIsNotAsked) {
  system_.appKit.canPreventActivation = false;
  const auto view = fake::openWindow(true);
  makePanel(view);
  EXPECT_EQ(fake::setupOf(view).styleMask, 1U << 7);
  EXPECT_FALSE(fake::setupOf(view).preventsActivation);
}

TEST_F(PanelTest, AWindowThatIsNoPanelStaysAsItIs) {
  const auto view = fake::openWindow(false);
  makePanel(view);
  EXPECT_EQ(fake::setupOf(view), fake::WindowSetup{});
}

TEST_F(PanelTest, PressesElsewhereAreToldUntilTheWatchEnds) {
  int pressed = 0;
  auto watch = watchPressesElsewhere([&] { ++pressed; });
  fake::pressElsewhere(leftDown);
  fake::pressElsewhere(rightDown);
  fake::pressElsewhere(otherDown);
  fake::pressElsewhere(keyDown);
  EXPECT_EQ(pressed, 3);
  watch.reset();
  fake::pressElsewhere(leftDown);
  EXPECT_EQ(pressed, 3);
}

TEST_F(PanelTest, AWatchMayEndItself) {
  int pressed = 0;
  Subscription watch;
  watch = watchPressesElsewhere([&] {
    watch.reset();
    ++pressed;
  });
  fake::pressElsewhere(leftDown);
  fake::pressElsewhere(leftDown);
  EXPECT_EQ(pressed, 1);
}

TEST_F(PanelTest, AWatchThatTheSystemRefusesIsNone) {
  system_.appKit.canInstallMonitors = false;
  EXPECT_FALSE(watchPressesElsewhere([] {}));
}

}  // namespace
}  // namespace tilora::macos
