// How the controller starts, when it makes a pass, and how it ends.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "controller/session.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using simulated::HotKeyRegistered;
using simulated::HotKeyUnregistered;
using simulated::moved;
using simulated::resized;
using simulated::SelfActivated;
using simulated::TrustRequested;
using test::Session;
using test::stored;
using test::tiledLaptop;
using test::windowPaddingKey;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using enum PublishedProperty;

/// A desktop on which each pass writes the one window's frame.
simulated::DesktopBuilder oneWindow() {
  auto builder = tiledLaptop();
  builder.app(100).window(1).front(100, 1);
  return builder;
}

/// The number of passes on that desktop among some effects.
std::size_t passes(const std::vector<simulated::Effect>& effects) {
  return static_cast<std::size_t>(std::count(effects.begin(), effects.end(), moved(1, 10, 35)));
}

TEST(Construction, OfAFreshInstallTakesTheDefaults) {
  Session session(test::laptop());
  const auto& controller = session.controller();

  EXPECT_EQ(controller.windowPadding(), 12);
  EXPECT_FALSE(controller.startOnLoginEnabled());
  EXPECT_FALSE(controller.isAccessibilityTrusted());
  EXPECT_EQ(controller.shortcutBindings(), ShortcutBindings{});
  EXPECT_EQ(controller.startOnLoginError(), std::nullopt);
  EXPECT_THAT(controller.windowPlacements(), IsEmpty());
  EXPECT_THAT(controller.appPlacementPreferences(), IsEmpty());
  EXPECT_THAT(controller.windowPairings(), IsEmpty());
  EXPECT_THAT(controller.visibleWindowKeysByScreen(), IsEmpty());
  EXPECT_FALSE(controller.pendingRetile());
}

TEST(Construction, RegistersTheFourHotKeysAndTouchesNothingElse) {
  Session session(test::laptop().app(100).window(1).front(100, 1));

  EXPECT_THAT(session.effects(), ElementsAre(HotKeyRegistered{1, 33, 0xA00, true}, HotKeyRegistered{2, 30, 0xA00, true},
                                             HotKeyRegistered{3, 49, 0xA00, true}, HotKeyRegistered{4, 38, 0xA00, true}));
}

TEST(Construction, LoadsWhatIsStored) {
  Session session(test::laptop()
                      .setting(windowPaddingKey, 8.0)
                      .setting(test::shortcutBindingsKey,
                               SettingData{R"({"moveLeft":{"keyCode":1,"modifiers":256},"moveRight":{"keyCode":2,"modifiers":256},
                                     "centerOrFullscreen":{"keyCode":3,"modifiers":256}})"})
                      .setting(test::placementPreferencesKey, SettingData{R"({"app":"left"})"}));
  const ShortcutBindings bindings = {{1, 256}, {2, 256}, {3, 256}, ShortcutBindings{}.floatCenter};

  EXPECT_EQ(session.controller().windowPadding(), 8);
  EXPECT_EQ(session.controller().shortcutBindings(), bindings);
  EXPECT_THAT(session.controller().appPlacementPreferences(), UnorderedElementsAre(Pair("app", WindowPlacement::left)));
  EXPECT_THAT(session.effects(),
              ElementsAre(stored(windowPaddingKey, 8.0), HotKeyRegistered{1, 1, 256, true}, HotKeyRegistered{2, 2, 256, true},
                          HotKeyRegistered{3, 3, 256, true}, HotKeyRegistered{4, 38, 0xA00, true}));
}

TEST(Construction, AStoredGapThatDiffersIsWrittenBackAndSchedulesAPass) {
  Session session(test::laptop().setting(windowPaddingKey, -5.0));

  EXPECT_EQ(session.controller().windowPadding(), 0);
  EXPECT_TRUE(session.controller().pendingRetile());
  EXPECT_EQ(session.effects().at(0), stored(windowPaddingKey, 0.0));
}

TEST(Construction, AStoredGapOfTheDefaultSchedulesNothing) {
  Session session(test::laptop().setting(windowPaddingKey, 12.0));

  EXPECT_FALSE(session.controller().pendingRetile());
}

TEST(Construction, AsksForAccessOnTheNextTurn) {
  Session session(test::laptop());
  session.effects();
  EXPECT_FALSE(session.controller().isAccessibilityTrusted());

  session.runPosted();

  EXPECT_THAT(session.effects(), ElementsAre(SelfActivated{}, TrustRequested{true}));
  EXPECT_TRUE(session.controller().isAccessibilityTrusted());
  EXPECT_TRUE(session.controller().pendingRetile());
}

TEST(Passes, TheFirstComesAFifthOfASecondAfterAccessIsConfirmed) {
  Session session(oneWindow());
  session.runPosted();
  session.effects();

  session.advance(199ms);
  EXPECT_THAT(session.effects(), IsEmpty());
  session.advance(1ms);
  EXPECT_THAT(session.effects(), ElementsAre(moved(1, 10, 35), resized(1, 1420, 855)));
}

TEST(Passes, ComeFourTimesASecond) {
  Session session(oneWindow());
  session.runPosted();
  session.advance(200ms);
  session.effects();

  session.advance(49ms);
  EXPECT_THAT(session.effects(), IsEmpty());
  session.advance(1ms);
  EXPECT_EQ(passes(session.effects()), 1);
  session.advance(1000ms);
  EXPECT_EQ(passes(session.effects()), 4);
}

TEST(Passes, DoNotComeWithoutTrust) {
  Session session(oneWindow().untrusted());
  session.runPosted();
  session.controller().scheduleRetile();
  session.effects();

  session.advance(2000ms);

  EXPECT_THAT(session.effects(), IsEmpty());
  EXPECT_FALSE(session.controller().pendingRetile());
}

/// Each event of the workspace that asks for a pass.
class WorkspaceEvents : public testing::TestWithParam<WorkspaceEvent> {};

TEST_P(WorkspaceEvents, ScheduleOnePass) {
  Session session(tiledLaptop());
  session.advance(1000ms);

  session.desktop().notify(GetParam());
  session.runPosted();

  EXPECT_TRUE(session.controller().pendingRetile());
}

INSTANTIATE_TEST_SUITE_P(All, WorkspaceEvents,
                         testing::Values(WorkspaceEvent::launched, WorkspaceEvent::terminated, WorkspaceEvent::activated,
                                         WorkspaceEvent::spaceChanged, WorkspaceEvent::screensChanged));

/// A session in its calm state: 10 ms after a tick, nothing is scheduled.
class CalmSession : public testing::Test {
 protected:
  CalmSession() : session_(oneWindow()) {
    session_.runPosted();
    session_.advance(1010ms);
    session_.effects();
    session_.changes();
  }

  void notify(WorkspaceEvent event) {
    session_.desktop().notify(event);
    session_.runPosted();
  }

  Session session_;
};

TEST_F(CalmSession, ABurstOfEventsIsServedByOnePassAFifthOfASecondAfterTheFirst) {
  for (int i = 0; i < 10; ++i) {
    notify(WorkspaceEvent::launched);
    session_.advance(10ms);
  }
  EXPECT_TRUE(session_.controller().pendingRetile());

  session_.advance(99ms);
  EXPECT_EQ(passes(session_.effects()), 0);
  session_.advance(1ms);
  EXPECT_EQ(passes(session_.effects()), 1);
  EXPECT_FALSE(session_.controller().pendingRetile());

  session_.advance(39ms);
  EXPECT_EQ(passes(session_.effects()), 0);
}

TEST_F(CalmSession, AnEventAfterThePassStartsANewWait) {
  notify(WorkspaceEvent::activated);
  session_.advance(200ms);
  session_.effects();

  notify(WorkspaceEvent::activated);
  EXPECT_TRUE(session_.controller().pendingRetile());
  session_.advance(199ms);
  EXPECT_EQ(passes(session_.effects()), 1);  // that of the timer
  session_.advance(1ms);
  EXPECT_EQ(passes(session_.effects()), 1);
}

TEST_F(CalmSession, ANewGapIsStoredAndServedByOnePass) {
  session_.controller().setWindowPadding(20);

  EXPECT_EQ(session_.controller().windowPadding(), 20);
  EXPECT_THAT(session_.effects(), ElementsAre(stored(windowPaddingKey, 20.0)));
  EXPECT_THAT(session_.changes(), ElementsAre(windowPadding));
  session_.advance(200ms);
  EXPECT_THAT(session_.effects(), ElementsAre(moved(1, 20, 45), resized(1, 1400, 835)));
}

TEST_F(CalmSession, TheSameGapIsNeitherStoredNorServed) {
  session_.controller().setWindowPadding(test::gap);

  EXPECT_THAT(session_.effects(), IsEmpty());
  EXPECT_FALSE(session_.controller().pendingRetile());
  EXPECT_THAT(session_.changes(), ElementsAre(windowPadding));
}

TEST_F(CalmSession, ANegativeGapBecomesZeroAndIsServedByOnePass) {
  for (const double rejected : {-5.0, std::numeric_limits<double>::quiet_NaN()}) {
    session_.controller().setWindowPadding(rejected);

    EXPECT_EQ(session_.controller().windowPadding(), 0);
    EXPECT_THAT(session_.effects(), ElementsAre(stored(windowPaddingKey, 0.0)));
    EXPECT_THAT(session_.changes(), ElementsAre(windowPadding, windowPadding));
    EXPECT_TRUE(session_.controller().pendingRetile());
    session_.advance(200ms);
    EXPECT_EQ(passes(session_.effects()), 0);
    EXPECT_FALSE(session_.controller().pendingRetile());
    session_.advance(50ms);
    session_.effects();
  }
}

TEST_F(CalmSession, AGapHasNoUpperBoundHere) {
  session_.controller().setWindowPadding(5000);

  EXPECT_EQ(session_.controller().windowPadding(), 5000);
}

TEST_F(CalmSession, NewBindingsAreNeitherStoredNorRegisteredByThemselves) {
  session_.controller().setBinding({1, 256}, ShortcutAction::moveRight);
  session_.controller().setShortcutBindings({});

  EXPECT_THAT(session_.effects(), IsEmpty());
  EXPECT_THAT(session_.changes(), ElementsAre(shortcutBindings, shortcutBindings));
}

TEST_F(CalmSession, ABindingIsReplacedAlone) {
  session_.controller().setBinding({1, 256}, ShortcutAction::moveRight);

  EXPECT_EQ(session_.controller().binding(ShortcutAction::moveRight), (ShortcutBinding{1, 256}));
  EXPECT_EQ(session_.controller().binding(ShortcutAction::moveLeft), ShortcutBindings{}.moveLeft);
  EXPECT_TRUE(session_.controller().isBindingInUse({1, 256}, ShortcutAction::moveLeft));
  EXPECT_FALSE(session_.controller().isBindingInUse({1, 256}, ShortcutAction::moveRight));
}

TEST_F(CalmSession, RegisteringAnewGivesTheOldCombinationsBackFirst) {
  session_.controller().setBinding({1, 256}, ShortcutAction::moveLeft);
  session_.controller().registerHotKeys();

  EXPECT_THAT(session_.effects(), ElementsAre(HotKeyUnregistered{1}, HotKeyUnregistered{2}, HotKeyUnregistered{3}, HotKeyUnregistered{4},
                                              HotKeyRegistered{1, 1, 256, true}, HotKeyRegistered{2, 30, 0xA00, true},
                                              HotKeyRegistered{3, 49, 0xA00, true}, HotKeyRegistered{4, 38, 0xA00, true}));
  session_.desktop().hotKeys().press({33, 0xA00});
  EXPECT_THAT(session_.effects(), IsEmpty());
  session_.desktop().hotKeys().press({1, 256});
  EXPECT_EQ(session_.controller().windowPlacements().at({100, 1}), WindowPlacement::left);
}

TEST_F(CalmSession, ACombinationThatCannotBeHadIsSkippedAndTheOthersWork) {
  session_.desktop().hotKeys().setTaken({30, 0xA00}, true);
  session_.controller().registerHotKeys();
  session_.effects();

  session_.desktop().hotKeys().press({30, 0xA00});
  EXPECT_THAT(session_.effects(), IsEmpty());
  session_.desktop().hotKeys().press({33, 0xA00});
  EXPECT_EQ(session_.controller().windowPlacements().at({100, 1}), WindowPlacement::left);
  EXPECT_EQ(session_.controller().startOnLoginError(), std::nullopt);
}

/// Each combination and the placement it gives.
struct HotKeyCase {
  std::string name;
  std::uint32_t keyCode;
  WindowPlacement placement;
};

class HotKeys : public testing::TestWithParam<HotKeyCase> {};

TEST_P(HotKeys, GiveTheFocusedWindowTheirPlacement) {
  Session session(oneWindow());

  session.desktop().hotKeys().press({GetParam().keyCode, 0xA00});

  EXPECT_THAT(session.controller().windowPlacements(), UnorderedElementsAre(Pair(WindowKey{100, 1}, GetParam().placement)));
}

INSTANTIATE_TEST_SUITE_P(Defaults, HotKeys,
                         testing::Values(HotKeyCase{"LeftBracket", 33, WindowPlacement::left},
                                         HotKeyCase{"RightBracket", 30, WindowPlacement::right},
                                         HotKeyCase{"Space", 49, WindowPlacement::full}, HotKeyCase{"J", 38, WindowPlacement::floatCenter}),
                         test::caseName);

TEST_F(CalmSession, AfterItsEndNothingReachesTheController) {
  session_.controller().scheduleRetile();
  session_.controller().scheduleBringSettingsWindowToFront(100ms);
  session_.desktop().notify(WorkspaceEvent::launched);

  session_.destroyController();

  EXPECT_THAT(session_.effects(), ElementsAre(HotKeyUnregistered{1}, HotKeyUnregistered{2}, HotKeyUnregistered{3}, HotKeyUnregistered{4}));
  for (const auto event : {WorkspaceEvent::launched, WorkspaceEvent::terminated, WorkspaceEvent::activated, WorkspaceEvent::spaceChanged,
                           WorkspaceEvent::screensChanged}) {
    session_.desktop().notify(event);
  }
  session_.desktop().hotKeys().press({33, 0xA00});
  session_.advance(2000ms);
  EXPECT_THAT(session_.effects(), IsEmpty());
}

TEST(Destruction, RightAfterConstructionAsksForNothing) {
  Session session(test::laptop());
  session.destroyController();
  session.effects();

  session.advance(1000ms);

  EXPECT_THAT(session.effects(), IsEmpty());
}

}  // namespace
}  // namespace tilora
