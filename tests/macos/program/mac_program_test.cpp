// The resident process on macOS: its icon, its panel, its settings window, and what each does to the active program.
#include "app/mac_program.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include "objective_c/objective_c_test.h"
#include "tests/app/ui/interface_session.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;
using macos::ObjectiveCTest;
using macos::fake::ShownStatusItem;
using simulated::Effect;
using simulated::SelfActivated;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::uint32_t keyJ = 38;
constexpr std::uint64_t commandFlag = 1U << 20;
constexpr std::uint64_t controlFlag = 1U << 18;
constexpr std::uint64_t leftDown = 1U << 1;

class MacProgramTest : public ObjectiveCTest {
 protected:
  void SetUp() override {
    // A release was looked for a moment ago.
    world_->settings().put("lastUpdateCheck", std::chrono::system_clock::now());
    program_.emplace("https://tilora.invalid/tilora", [this](QWindow&) { return panelView_ = macos::fake::openWindow(true); });
    pass(300ms);
    world_->takeEffects();
  }
  void TearDown() override {
    program_.reset();
    // What is still on the main queue is the queue's.
    world_->clock().advance(1s);
    ObjectiveCTest::TearDown();
  }

  void pass(std::chrono::milliseconds time) {
    world_->clock().advance(time);
    turn();
  }
  /// The user clicks the icon.
  void click() {
    macos::fake::clickStatusItem();
    turn();
  }
  bool isMenuOpen() {
    const auto* panel = program_->interface().menuPanel();
    return panel && panel->isVisible();
  }
  /// Shows the settings window and presses the button that records the first shortcut.
  void recordFirstShortcut() {
    program_->interface().performSettingsCommand();
    turn();
    InterfaceSession::click(find(find(*program_->interface().settingsWindow()->rootObject(), "shortcut0"), "record"));
  }
  std::string firstBinding() { return text(find(find(*program_->interface().settingsWindow()->rootObject(), "shortcut0"), "binding")); }

  std::uintptr_t panelView_ = 0;
  std::optional<MacProgram> program_;
};

TEST_F(MacProgramTest, TheIconSaysWhetherWindowsCanBeControlled) {
  EXPECT_THAT(macos::fake::shownStatusItems(), ElementsAre(ShownStatusItem{"rectangle.stack.fill", true, "Tilora", "Tilora"}));
  world_->trust().trusted = false;
  pass(250ms);
  EXPECT_EQ(macos::fake::shownStatusItems().at(0).symbol, "exclamationmark.triangle.fill");
}

TEST_F(MacProgramTest, TheMenuOpensWithoutActivatingTheProgram) {
  click();
  EXPECT_TRUE(isMenuOpen());
  EXPECT_EQ(macos::fake::setupOf(panelView_).styleMask, 1U << 7);
  EXPECT_THAT(world_->takeEffects(), Not(Contains(Effect(SelfActivated{}))));
}

TEST_F(MacProgramTest, TheMenuIsOfTheKindThatTakesTheKeyboard) {
  click();
  EXPECT_EQ(program_->interface().menuPanel()->type(), Qt::Tool);
  EXPECT_TRUE(program_->interface().menuPanel()->flags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(MacProgramTest, TheMenuClosesWhenAnotherWindowTakesTheKeyboard) {
  click();
  program_->interface().performSettingsCommand();
  program_->interface().settingsWindow()->requestActivate();
  turn();
  EXPECT_FALSE(isMenuOpen());
}

TEST_F(MacProgramTest, TheMenuOpensUnderTheIcon) {
  system_.appKit.iconPlace = {300, 876, 33, 24};
  click();
  EXPECT_EQ(program_->interface().menuPanel()->position().x(), 300);
}

TEST_F(MacProgramTest, AnotherClickOnTheIconClosesTheMenu) {
  click();
  click();
  EXPECT_FALSE(isMenuOpen());
  EXPECT_EQ(macos::fake::installedMonitors(), 0U);
}

TEST_F(MacProgramTest, APressInAnotherProgramClosesTheMenu) {
  click();
  macos::fake::pressElsewhere(leftDown);
  EXPECT_FALSE(isMenuOpen());
  EXPECT_EQ(macos::fake::installedMonitors(), 0U);
}

TEST_F(MacProgramTest, TheSettingsWindowActivatesTheProgram) {
  program_->interface().performSettingsCommand();
  pass(1ms);
  EXPECT_TRUE(program_->interface().settingsWindow()->isVisible());
  EXPECT_THAT(world_->takeEffects(), Contains(Effect(SelfActivated{})));
}

TEST_F(MacProgramTest, OpeningTheProgramAgainOpensTheSettings) {
  macos::fake::reopen();
  pass(1ms);
  ASSERT_TRUE(program_->interface().settingsWindow());
  EXPECT_TRUE(program_->interface().settingsWindow()->isVisible());
  EXPECT_THAT(world_->takeEffects(), Contains(Effect(SelfActivated{})));
}

TEST_F(MacProgramTest, CommandIsRecordedAsCommand) {
  recordFirstShortcut();
  EXPECT_TRUE(world_->keyMonitor().press({keyJ, commandFlag}));
  turn();
  EXPECT_EQ(firstBinding(), "Cmd+J");
  EXPECT_EQ(system_.hotKeyCalls.at(system_.hotKeyCalls.size() - 4), (macos::fake::HotKeyCall{0x534C4457, 1, keyJ, 0x100, 0}));
}

TEST_F(MacProgramTest, ControlIsRecordedAsControl) {
  recordFirstShortcut();
  EXPECT_TRUE(world_->keyMonitor().press({keyJ, controlFlag}));
  turn();
  EXPECT_EQ(firstBinding(), "Ctrl+J");
  EXPECT_EQ(system_.hotKeyCalls.at(system_.hotKeyCalls.size() - 4), (macos::fake::HotKeyCall{0x534C4457, 1, keyJ, 0x1000, 0}));
}

TEST_F(MacProgramTest, TheLayoutGoesOnWhileAMenuIsTracked) {
  system_.appKit.tracksMenu = true;
  world_->trust().trusted = false;
  pass(250ms);
  EXPECT_EQ(macos::fake::shownStatusItems().at(0).symbol, "exclamationmark.triangle.fill");
}

}  // namespace
}  // namespace tilora::app
