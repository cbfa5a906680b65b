// The program's own place on the desktop.
#include "platform/macos/shell.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

using simulated::Effect;
using simulated::SelfActivated;
using simulated::UrlOpened;
using testing::ElementsAre;
using testing::IsEmpty;

class ShellTest : public ObjectiveCTest {
 protected:
  MacShell shell_;
};

TEST_F(ShellTest, TheProgramComesToTheFrontWhicheverIsActive) {
  shell_.activateSelf();
  EXPECT_THAT(world_->takeEffects(), ElementsAre(Effect(SelfActivated{})));
}

TEST_F(ShellTest, WindowsComeInTheOrderOfTheSystemAsTheyAre) {
  world_->shell().windows = {std::make_shared<simulated::SimulatedOwnWindow>("Panel", false),
                             std::make_shared<simulated::SimulatedOwnWindow>("Tilora Settings", true, true)};
  const auto windows = shell_.ownWindows();
  ASSERT_EQ(windows.size(), 2U);
  EXPECT_EQ(windows[0]->title(), "Panel");
  EXPECT_FALSE(windows[0]->canBecomeKey());
  EXPECT_FALSE(windows[0]->isMinimized());
  EXPECT_EQ(windows[1]->title(), "Tilora Settings");
  EXPECT_TRUE(windows[1]->canBecomeKey());
  EXPECT_TRUE(windows[1]->isMinimized());
}

TEST_F(ShellTest, AWindowIsOrderedFrontAndMadeKey) {
  const auto window = std::make_shared<simulated::SimulatedOwnWindow>("Tilora Settings");
  world_->shell().windows = {window};
  const auto own = shell_.ownWindows().at(0);
  own->orderFrontRegardless();
  EXPECT_EQ(window->timesOrderedFront, 1);
  EXPECT_EQ(window->timesMadeKey, 0);
  own->makeKeyAndOrderFront();
  EXPECT_EQ(window->timesOrderedFront, 1);
  EXPECT_EQ(window->timesMadeKey, 1);
}

TEST_F(ShellTest, AnAddressIsOpenedAsItStands) {
  const std::string page = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
  shell_.openURL(page);
  EXPECT_THAT(world_->takeEffects(), ElementsAre(Effect(UrlOpened{page})));
}

TEST_F(ShellTest, WhatIsNoAddressIsNotOpened) {
  shell_.openURL("no address");
  shell_.openURL("https://example.org/\xFF");
  EXPECT_THAT(world_->takeEffects(), IsEmpty());
}

}  // namespace
}  // namespace tilora::macos
