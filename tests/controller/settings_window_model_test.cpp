// What the settings window shows and what its controls do.
#include "controller/settings_window_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controller/session.h"

namespace tilora {
namespace {

using simulated::HotKeyRegistered;
using simulated::SettingStored;
using test::Session;

class SettingsWindow : public testing::Test {
 protected:
  WindowManagerController& controller() { return session_.controller(); }

  Session session_{test::tiledLaptop()};
  SettingsWindowModel window_{session_.controller(), session_.desktop().keyMonitor()};
};

TEST(PaddingLabel, IsTruncatedTowardZero) {
  EXPECT_EQ(paddingLabel(12.6), "12 px");
  EXPECT_EQ(paddingLabel(0), "0 px");
  EXPECT_EQ(paddingLabel(80), "80 px");
}

TEST_F(SettingsWindow, TheStepperGoesInWholeSteps) {
  window_.incrementPadding();
  EXPECT_EQ(controller().windowPadding(), 11);
  window_.decrementPadding();
  window_.decrementPadding();
  EXPECT_EQ(controller().windowPadding(), 9);
  EXPECT_EQ(window_.padding(), "9 px");
}

TEST_F(SettingsWindow, TheStepperEndsAtEighty) {
  controller().setWindowPadding(79.5);
  EXPECT_TRUE(window_.canIncrementPadding());
  window_.incrementPadding();
  EXPECT_EQ(controller().windowPadding(), 80);
  EXPECT_FALSE(window_.canIncrementPadding());
  window_.incrementPadding();
  EXPECT_EQ(controller().windowPadding(), 80);
}

TEST_F(SettingsWindow, TheStepperEndsAtZero) {
  controller().setWindowPadding(0.5);
  EXPECT_TRUE(window_.canDecrementPadding());
  window_.decrementPadding();
  EXPECT_EQ(controller().windowPadding(), 0);
  EXPECT_FALSE(window_.canDecrementPadding());
  window_.decrementPadding();
  EXPECT_EQ(controller().windowPadding(), 0);
}

TEST_F(SettingsWindow, AGapBeyondTheStepperComesBackIntoIt) {
  controller().setWindowPadding(500);
  EXPECT_FALSE(window_.canIncrementPadding());
  window_.decrementPadding();
  EXPECT_EQ(controller().windowPadding(), 80);
}

TEST_F(SettingsWindow, TheMessageUnderTheLoginToggleIsTheControllers) {
  EXPECT_EQ(window_.startOnLoginError(), "");
  session_.desktop().loginItem().traits.status = LoginItemStatus::requiresApproval;
  controller().refreshStartOnLoginStatus();
  EXPECT_EQ(window_.startOnLoginError(), "macOS requires approval in System Settings > General > Login Items.");
}

TEST_F(SettingsWindow, ARecordedCombinationIsStoredAndFires) {
  session_.effects();
  window_.recorder().toggle(ShortcutAction::moveLeft);
  session_.desktop().keyMonitor().press({40, 1U << 17});

  const auto effects = session_.effects();

  EXPECT_EQ(controller().binding(ShortcutAction::moveLeft), (ShortcutBinding{40, 0x200}));
  EXPECT_THAT(effects, testing::Contains(testing::VariantWith<SettingStored>(testing::_)).Times(1));
  EXPECT_THAT(effects, testing::Contains(simulated::Effect(HotKeyRegistered{1, 40, 0x200, true})));
}

TEST_F(SettingsWindow, ARefusedCombinationChangesNothing) {
  session_.effects();
  window_.recorder().toggle(ShortcutAction::moveRight);
  session_.desktop().keyMonitor().press({33, (1U << 17) | (1U << 19)});

  EXPECT_EQ(controller().shortcutBindings(), ShortcutBindings{});
  EXPECT_THAT(session_.effects(), testing::ElementsAre(simulated::KeyMonitorInstalled{}, simulated::KeyMonitorRemoved{}));
  EXPECT_TRUE(window_.recorder().shortcutError().has_value());
}

TEST_F(SettingsWindow, ClosingItEndsARecording) {
  window_.recorder().toggle(ShortcutAction::moveLeft);

  window_.disappear();

  EXPECT_EQ(session_.desktop().keyMonitor().installedMonitors(), 0);
  EXPECT_EQ(window_.recorder().recordingAction(), std::nullopt);
}

}  // namespace
}  // namespace tilora
