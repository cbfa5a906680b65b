// Under which name a choice for the focused window is remembered.
#include "tiling/command_target.h"

#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::SimulatedDesktop;

FocusedWindow focused(SimulatedDesktop& desktop) { return focusedWindow(desktop.interfaces()).value(); }

TEST(CommandTarget, IsTheFocusedWindowAmongTheManagedOnes) {
  const auto desktop =
      test::twoScreens().app(100).window(1).window(2, {.title = "Notes", .frame = test::onSecondScreen}).front(100, 2).build();

  const auto target = commandTarget(focused(*desktop), desktop->interfaces());

  EXPECT_EQ(target.windowIdentity, "title:notes");
  EXPECT_EQ(target.screen, desktop->screens().screens().at(1));
}

TEST(CommandTarget, OfAWindowThatIsNotListedGoesByItsTitleAndHasNoScreen) {
  const auto desktop = test::laptop().app(100).window(1, {.title = " Über Uns ", .listed = false}).front(100, 1).build();

  const auto target = commandTarget(focused(*desktop), desktop->interfaces());

  EXPECT_EQ(target.windowIdentity, "title:über uns");
  EXPECT_EQ(target.screen, nullptr);
}

TEST(CommandTarget, OfAnApplicationThatHasJustQuitGoesByTitle) {
  const auto desktop = test::laptop().app(100).window(1, {.title = "Notes"}).front(100, 1).build();
  const auto window = focused(*desktop);

  desktop->quit(100);
  const auto target = commandTarget(window, desktop->interfaces());

  EXPECT_EQ(target.windowIdentity, "title:<untitled>");
  EXPECT_EQ(target.screen, nullptr);
}

TEST(CommandTarget, IsTheFirstOfTwoWindowsWithOneKey) {
  const auto desktop =
      test::twoScreens().app(100).window(1, {.number = 7}).window(2, {.frame = test::onSecondScreen, .number = 7}).front(100, 2).build();

  EXPECT_EQ(commandTarget(focused(*desktop), desktop->interfaces()).screen, desktop->screens().screens().at(0));
}

}  // namespace
}  // namespace tilora
