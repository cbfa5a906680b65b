// The four commands: where windows go, which ones pair up and which ones are hidden.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class PlacementTest : public DesktopTest {};

TEST_P(PlacementTest, TheActiveWindowFillsTheScreenAndTheOthersAreHidden) {
  const App& first = open("first");
  const App& second = open("second");
  startTilora();
  EXPECT_TRUE(isTiled(second.window, Place::full));
  EXPECT_TRUE(isHidden(first.window));
  EXPECT_TRUE(isActive(second.window));
}

TEST_P(PlacementTest, EachShortcutGivesTheActiveWindowItsPlace) {
  const App& app = open("app");
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::full));
  for (const Place place : {Place::left, Place::right, Place::floating, Place::full}) {
    press(place);
    EXPECT_TRUE(isTiled(app.window, place));
    EXPECT_TRUE(isActive(app.window));
  }
}

TEST_P(PlacementTest, ALeftAndARightWindowAreShownSideBySide) {
  const App& left = open("left");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(left.window, Place::left));
  const App& right = open("right");
  EXPECT_TRUE(isTiled(right.window, Place::full));
  press(Place::right);
  EXPECT_TRUE(isTiled(right.window, Place::right));
  EXPECT_TRUE(isTiled(left.window, Place::left));
  EXPECT_TRUE(isActive(right.window));
}

TEST_P(PlacementTest, AThirdWindowHidesThePairAndThePairComesBackTogether) {
  const App& left = open("left");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(left.window, Place::left));
  const App& right = open("right");
  press(Place::right);
  EXPECT_TRUE(isTiled(right.window, Place::right));
  EXPECT_TRUE(isTiled(left.window, Place::left));
  const App& third = open("third");
  EXPECT_TRUE(isTiled(third.window, Place::full));
  EXPECT_TRUE(isHidden(left.window));
  EXPECT_TRUE(isHidden(right.window));
  activate(left.window);
  EXPECT_TRUE(isTiled(left.window, Place::left));
  EXPECT_TRUE(isTiled(right.window, Place::right));
  EXPECT_TRUE(isHidden(third.window));
  ASSERT_TRUE(passes());
  EXPECT_TRUE(isActive(left.window));
}

TEST_P(PlacementTest, ThePairExchangesItsSides) {
  const App& first = open("first");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(first.window, Place::left));
  const App& second = open("second");
  press(Place::right);
  EXPECT_TRUE(isTiled(first.window, Place::left));
  press(Place::left);
  EXPECT_TRUE(isTiled(second.window, Place::left));
  EXPECT_TRUE(isHidden(first.window));
  activate(first.window);
  EXPECT_TRUE(isTiled(first.window, Place::left));
  press(Place::right);
  EXPECT_TRUE(isTiled(first.window, Place::right));
  EXPECT_TRUE(isTiled(second.window, Place::left));
  ASSERT_TRUE(passes());
  EXPECT_TRUE(isActive(first.window));
}

TEST_P(PlacementTest, APlacementIsRememberedWhenTheProgramStartsAgain) {
  App& app = open("editor");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  app.client.destroy(app.window);
  const App& again = open("editor");
  EXPECT_TRUE(isTiled(again.window, Place::left));
}

TEST_P(PlacementTest, APlacementIsRememberedWhenTiloraStartsAgain) {
  const App& app = open("editor");
  startTilora();
  press(Place::right);
  EXPECT_TRUE(isTiled(app.window, Place::right));
  tilora->signal(SIGTERM);
  ASSERT_EQ(tilora->waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  display.sendRootMessage(app.window, "_NET_MOVERESIZE_WINDOW", {10U | 0xfU << 8U, 100, 100, 300, 200});
  ASSERT_TRUE(comesTrue([&] { return display.clientArea(app.window)->width == 300; }));
  startTilora();
  EXPECT_TRUE(isTiled(app.window, Place::right));
}

TEST_P(PlacementTest, AFloatingWindowStaysWhereTheUserPutsIt) {
  const App& app = open("app");
  startTilora();
  press(Place::floating);
  EXPECT_TRUE(isTiled(app.window, Place::floating));
  display.sendRootMessage(app.window, "_NET_MOVERESIZE_WINDOW", {10U | 0xfU << 8U, 200, 150, 500, 300});
  ASSERT_TRUE(comesTrue([&] { return display.clientArea(app.window)->width == 500; }));
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.clientArea(app.window)->width, 500);
  EXPECT_EQ(display.clientArea(app.window)->height, 300);
}

TEST_P(PlacementTest, ATiledWindowThatIsMovedGoesBackToItsPlace) {
  const App& app = open("app");
  startTilora();
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  display.sendRootMessage(app.window, "_NET_MOVERESIZE_WINDOW", {10U | 0xfU << 8U, 700, 300, 400, 200});
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(PlacementTest, ADialogIsLeftAloneAndLetsItsParentStay) {
  App& app = open("app");
  const App& other = open("other");
  startTilora();
  EXPECT_TRUE(isHidden(app.window));
  // Whoever brings a window back before Tilora has seen it go gets it brought back by Tilora as well, with the focus.
  ASSERT_TRUE(passes());
  activate(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  const WindowOptions options = {.title = "question",
                                 .instance = "app",
                                 .className = "app",
                                 .type = "DIALOG",
                                 .geometry = {500, 300, 320, 200},
                                 .transientFor = app.window};
  const xcb_window_t dialog = openWindow(app.client, options);
  const auto area = display.clientArea(dialog);
  press(Place::left);
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.clientArea(dialog), area);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  EXPECT_TRUE(isHidden(other.window));
}

TEST_P(PlacementTest, AnOrdinaryWindowThatBelongsToAnotherComesAndGoesWithIt) {
  App& app = open("app");
  const App& other = open("other");
  startTilora();
  EXPECT_TRUE(isHidden(app.window));
  activate(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  EXPECT_TRUE(isHidden(other.window));
  const WindowOptions options = {
      .title = "second", .instance = "app", .className = "app", .geometry = {500, 300, 320, 200}, .transientFor = app.window};
  const xcb_window_t second = openWindow(app.client, options);
  const auto area = display.clientArea(second);
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.clientArea(second), area);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  EXPECT_TRUE(isHidden(other.window));
  activate(other.window);
  EXPECT_TRUE(isHidden(app.window));
  EXPECT_TRUE(isHidden(second));
  activate(app.window);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  EXPECT_TRUE(isShown(second));
  EXPECT_TRUE(isHidden(other.window));
}

INSTANTIATE_TEST_SUITE_P(On, PlacementTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
