// Raising the program's own settings window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controller/session.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using simulated::SelfActivated;
using simulated::SimulatedOwnWindow;
using test::Session;
using testing::ElementsAre;

class OwnWindows : public testing::Test {
 protected:
  OwnWindows() { session_.effects(); }

  std::shared_ptr<SimulatedOwnWindow> add(const std::string& title, bool keyCapable = true, bool minimized = false) {
    auto window = std::make_shared<SimulatedOwnWindow>(title, keyCapable, minimized);
    session_.desktop().shell().windows.push_back(window);
    return window;
  }

  Session session_{test::laptop().untrusted()};
};

TEST_F(OwnWindows, TheFirstWithSettingsInItsTitleIsRaised) {
  const auto panel = add("Tilora");
  const auto settings = add("TILORA SETTINGS", false, true);
  const auto other = add("More settings");

  session_.controller().bringSettingsWindowToFront();

  EXPECT_EQ(settings->timesOrderedFront, 1);
  EXPECT_EQ(settings->timesMadeKey, 1);
  EXPECT_EQ(panel->timesOrderedFront + other->timesOrderedFront, 0);
  EXPECT_THAT(session_.effects(), ElementsAre(SelfActivated{}));
}

TEST_F(OwnWindows, WithoutOneTheFirstThatCanTakeTheKeyboardIsRaised) {
  const auto icon = add("Icon", false);
  const auto minimized = add("Minimised", true, true);
  const auto panel = add("Panel");

  session_.controller().bringSettingsWindowToFront();

  EXPECT_EQ(panel->timesOrderedFront, 1);
  EXPECT_EQ(panel->timesMadeKey, 1);
  EXPECT_EQ(icon->timesOrderedFront + minimized->timesOrderedFront, 0);
}

TEST_F(OwnWindows, WithoutAnyNothingIsRaised) {
  const auto icon = add("Icon", false);

  session_.controller().bringSettingsWindowToFront();

  EXPECT_EQ(icon->timesOrderedFront + icon->timesMadeKey, 0);
  EXPECT_THAT(session_.effects(), ElementsAre(SelfActivated{}));
}

TEST_F(OwnWindows, ADelayedRaiseWaits) {
  const auto settings = add("Settings");

  session_.controller().scheduleBringSettingsWindowToFront(80ms);
  session_.advance(79ms);
  EXPECT_EQ(settings->timesMadeKey, 0);
  session_.advance(1ms);
  EXPECT_EQ(settings->timesMadeKey, 1);
}

TEST_F(OwnWindows, TheSettingsAreRaisedThreeTimes) {
  const auto settings = add("Settings");
  session_.controller().raiseSettingsWindow();
  std::vector<int> raised;

  for (const auto step : {0ms, 79ms, 1ms, 119ms, 1ms, 5000ms}) {
    session_.advance(step);
    raised.push_back(settings->timesMadeKey);
  }

  EXPECT_THAT(raised, ElementsAre(1, 1, 2, 2, 3, 3));
}

}  // namespace
}  // namespace tilora
