// The four commands on the focused window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controller/session.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using simulated::ApplicationHidden;
using simulated::moved;
using simulated::resized;
using test::focus;
using test::Session;
using test::storedPreferences;
using test::tiledLaptop;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using enum ShortcutAction;

/// Three applications of one window each, the first in front.
simulated::DesktopBuilder threeApplications() {
  auto builder = tiledLaptop();
  builder.app(100, "notes").window(1).app(200, "mail").window(2).app(300, "music").window(3).front(100, 1);
  return builder;
}

std::string lone(const std::string& app, const std::string& placement) {
  return R"({")" + app + R"(||role:axwindow||axstandardwindow":")" + placement + R"("})";
}

TEST(Commands, MoveLeftTakesTheLeftHalfAndIsRemembered) {
  Session session(tiledLaptop().app(100, "notes").window(1).front(100, 1));

  EXPECT_THAT(session.perform(moveLeft), ElementsAre(storedPreferences(lone("notes", "left")), moved(1, 10, 35), resized(1, 705, 855)));
  EXPECT_THAT(session.controller().windowPlacements(), UnorderedElementsAre(Pair(WindowKey{100, 1}, WindowPlacement::left)));
  EXPECT_THAT(session.controller().appPlacementPreferences(),
              UnorderedElementsAre(Pair("notes||role:axwindow||axstandardwindow", WindowPlacement::left)));
}

TEST(Commands, MoveLeftJoinsAWindowOnTheRightAndHidesTheOthers) {
  Session session(threeApplications());
  focus(session.desktop(), 200, 2);
  session.perform(moveRight);
  focus(session.desktop(), 100, 1);

  session.perform(moveLeft);

  EXPECT_THAT(session.controller().windowPairings(),
              UnorderedElementsAre(Pair(WindowKey{100, 1}, WindowKey{200, 2}), Pair(WindowKey{200, 2}, WindowKey{100, 1})));
  EXPECT_THAT(session.controller().visibleWindowKeysByScreen(), UnorderedElementsAre(Pair("display:1", WindowKeySet{{100, 1}, {200, 2}})));
  EXPECT_TRUE(test::applicationOf(session.desktop(), 300)->isHidden());
  EXPECT_FALSE(test::applicationOf(session.desktop(), 200)->isHidden());
}

TEST(Commands, MoveRightOnTheLeftOfAPairBreaksIt) {
  Session session(threeApplications());
  session.perform(moveLeft);
  focus(session.desktop(), 200, 2);
  session.perform(moveRight);
  focus(session.desktop(), 100, 1);

  const auto effects = session.perform(moveRight);

  EXPECT_THAT(session.controller().windowPairings(), IsEmpty());
  EXPECT_THAT(effects, ElementsAre(testing::_, moved(1, 725, 35), resized(1, 705, 855), ApplicationHidden{200}));
}

TEST(Commands, MoveRightOnTheLeftOfAPairFindsAnotherPartner) {
  Session session(threeApplications());
  focus(session.desktop(), 300, 3);
  session.perform(moveLeft);
  focus(session.desktop(), 200, 2);
  session.perform(moveRight);
  focus(session.desktop(), 100, 1);
  session.perform(moveLeft);
  EXPECT_EQ(session.controller().windowPairings().at({100, 1}), (WindowKey{200, 2}));

  session.perform(moveRight);

  EXPECT_EQ(session.controller().windowPairings().at({100, 1}), (WindowKey{300, 3}));
  EXPECT_FALSE(session.controller().windowPairings().contains({200, 2}));
}

TEST(Commands, CenterOrFillFillsWithAWindowThatCanBeResized) {
  Session session(tiledLaptop().app(100, "notes").window(1).front(100, 1));
  session.perform(moveLeft);

  EXPECT_THAT(session.perform(centerOrFullscreen),
              ElementsAre(storedPreferences(lone("notes", "full")), moved(1, 10, 35), resized(1, 1420, 855)));
}

TEST(Commands, CenterOrFillCentresAWindowOfFixedSize) {
  Session session(tiledLaptop().app(100, "notes").window(1, {.resizable = false}).front(100, 1));

  EXPECT_THAT(session.perform(centerOrFullscreen), ElementsAre(storedPreferences(lone("notes", "full")), moved(1, 520, 312.5)));
}

TEST(Commands, FloatCentredMovesOnceAndNeverAgain) {
  Session session(tiledLaptop().app(100, "notes").window(1).front(100, 1));

  EXPECT_THAT(session.perform(floatCenter),
              ElementsAre(storedPreferences(lone("notes", "floatCenter")), moved(1, 294, 77.75), resized(1, 852, 769.5)));
  EXPECT_THAT(session.effectsOf([&] { session.controller().retileAllWindows(); }), IsEmpty());
  EXPECT_THAT(session.perform(moveLeft), testing::Contains(moved(1, 10, 35)));
  EXPECT_THAT(session.effectsOf([&] { session.controller().retileAllWindows(); }), testing::Contains(moved(1, 10, 35)));
}

TEST(Commands, FloatCentredCentresAWindowOfFixedSize) {
  Session session(tiledLaptop().app(100, "notes").window(1, {.resizable = false}).front(100, 1));

  EXPECT_THAT(session.perform(floatCenter), ElementsAre(testing::_, moved(1, 520, 312.5)));
}

TEST(Commands, FloatCentredGoesToTheScreenOfTheWindow) {
  auto builder = test::twoScreens();
  builder.setting(test::windowPaddingKey, test::gap).app(100).window(1, {.frame = test::onSecondScreen}).front(100, 1);
  Session session(builder);

  EXPECT_THAT(session.perform(floatCenter), ElementsAre(testing::_, moved(1, 1734, 77.75), resized(1, 852, 769.5)));
}

TEST(Commands, FloatCentredOnAWindowThatIsNotListedGoesToItsScreenToo) {
  auto builder = test::twoScreens();
  builder.setting(test::windowPaddingKey, test::gap).app(100).window(1, {.frame = test::onSecondScreen, .listed = false}).front(100, 1);
  Session session(builder);

  EXPECT_THAT(session.perform(floatCenter), ElementsAre(testing::_, moved(1, 1734, 77.75), resized(1, 852, 769.5)));
  EXPECT_THAT(session.controller().windowPlacements(), IsEmpty());
}

TEST(Commands, FloatCentredWithoutScreensIsOnlyRemembered) {
  Session session(simulated::desktop().app(100, "notes").window(1, {.title = "Draft"}).front(100, 1));

  EXPECT_THAT(session.perform(floatCenter), ElementsAre(storedPreferences(R"({"notes||title:draft":"floatCenter"})")));
}

TEST(Commands, TheChoiceIsStoredBeforeTheWindowMoves) {
  Session session(threeApplications());

  const auto effects = session.perform(moveLeft);

  EXPECT_EQ(effects.front(), storedPreferences(lone("notes", "left")));
  EXPECT_EQ(effects.at(1), moved(1, 10, 35));
}

TEST(Commands, OnAWindowThatIsNotListedAreRememberedByTitle) {
  Session session(tiledLaptop().app(100, "notes").window(1, {.title = " Über ", .listed = false}).front(100, 1));

  EXPECT_THAT(session.perform(moveLeft), ElementsAre(storedPreferences("{\"notes||title:über\":\"left\"}")));
}

TEST(Commands, ReplaceAChoiceForTheWholeApplication) {
  Session session(tiledLaptop()
                      .setting(test::placementPreferencesKey, SettingData{R"({"notes":"right","mail":"right"})"})
                      .app(100, "notes")
                      .window(1)
                      .front(100, 1));

  session.perform(moveLeft);

  EXPECT_THAT(
      session.controller().appPlacementPreferences(),
      UnorderedElementsAre(Pair("mail", WindowPlacement::right), Pair("notes||role:axwindow||axstandardwindow", WindowPlacement::left)));
}

TEST(Commands, OnWindowsOfOneIdentityWriteOneChoiceAndTheLaterWins) {
  Session session(tiledLaptop().app(100, "notes").window(1, {.title = "Same"}).window(2, {.title = "same "}).front(100, 1));
  session.perform(moveLeft);
  focus(session.desktop(), 100, 2);

  session.perform(moveRight);

  EXPECT_THAT(session.controller().appPlacementPreferences(), UnorderedElementsAre(Pair("notes||title:same", WindowPlacement::right)));
  EXPECT_THAT(session.controller().windowPlacements(),
              UnorderedElementsAre(Pair(WindowKey{100, 1}, WindowPlacement::right), Pair(WindowKey{100, 2}, WindowPlacement::right)));
}

TEST(Commands, AChoiceOutlivesTheProgram) {
  Session first(threeApplications());
  first.perform(moveLeft);
  Session second(
      threeApplications().setting(test::placementPreferencesKey, *first.desktop().settings().find(test::placementPreferencesKey)));

  EXPECT_THAT(second.effectsOf([&] { second.controller().retileAllWindows(); }), testing::Contains(resized(1, 705, 855)));
}

TEST(Commands, AChoiceReachesTheNextWindowOfItsKind) {
  Session session(tiledLaptop().app(100, "notes").window(1).front(100, 1));
  session.perform(moveLeft);
  session.desktop().quit(100);
  session.controller().retileAllWindows();
  EXPECT_THAT(session.controller().windowPlacements(), IsEmpty());

  Session later(tiledLaptop()
                    .setting(test::placementPreferencesKey, *session.desktop().settings().find(test::placementPreferencesKey))
                    .app(777, "notes")
                    .window(9)
                    .front(777, 9));
  later.controller().retileAllWindows();

  EXPECT_THAT(later.controller().windowPlacements(), UnorderedElementsAre(Pair(WindowKey{777, 9}, WindowPlacement::left)));
}

TEST(Commands, WorkWhileTheUserHoldsTheButtonButThePassWaits) {
  Session session(tiledLaptop().app(100, "notes").window(1).front(100, 1));
  session.desktop().pointer().buttons = 1;

  EXPECT_THAT(session.perform(moveLeft), ElementsAre(storedPreferences(lone("notes", "left"))));
  session.desktop().pointer().buttons = 0;
  EXPECT_THAT(session.effectsOf([&] { session.controller().retileAllWindows(); }), ElementsAre(moved(1, 10, 35), resized(1, 705, 855)));
}

/// A situation in which a command does nothing at all.
struct IdleCase {
  std::string name;
  std::function<void(simulated::SimulatedDesktop&)> arrange;
};

class IdleCommands : public testing::TestWithParam<IdleCase> {};

TEST_P(IdleCommands, ChangeNothing) {
  for (const auto action : allShortcutActions) {
    Session session(threeApplications().ownApp(400).window(4));
    GetParam().arrange(session.desktop());

    EXPECT_THAT(session.perform(action), IsEmpty());
    EXPECT_THAT(session.controller().windowPlacements(), IsEmpty());
    EXPECT_THAT(session.controller().appPlacementPreferences(), IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(
    Situations, IdleCommands,
    testing::Values(IdleCase{"WithoutTrust", [](auto& desktop) { desktop.trust().trusted = false; }},
                    IdleCase{"WithoutAFrontmostApplication", [](auto& desktop) { desktop.setFrontmost(std::nullopt); }},
                    IdleCase{"WithoutAFocusedWindow", [](auto& desktop) { focus(desktop, 100, std::nullopt); }},
                    IdleCase{"OnThisProgram", [](auto& desktop) { focus(desktop, 400, 4); }},
                    IdleCase{"OnASheet", [](auto& desktop) { desktop.setAttribute(1, AttributeName::role, std::string("AXSheet")); }},
                    IdleCase{"OnADialog", [](auto& desktop) { desktop.setAttribute(1, AttributeName::subrole, std::string("AXDialog")); }},
                    IdleCase{"OnAMinimisedWindow", [](auto& desktop) { desktop.setAttribute(1, AttributeName::minimized, true); }},
                    IdleCase{"OnAWindowThatCannotBeMoved",
                             [](auto& desktop) { desktop.setSettable(1, AttributeName::position, simulated::Settability::no); }}),
    test::caseName);

TEST(Commands, PublishTheTrustTheyFind) {
  Session session(threeApplications());
  EXPECT_FALSE(session.controller().isAccessibilityTrusted());

  session.perform(moveLeft);

  EXPECT_TRUE(session.controller().isAccessibilityTrusted());
}

}  // namespace
}  // namespace tilora
