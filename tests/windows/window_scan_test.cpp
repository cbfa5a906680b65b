// Which windows of an application are managed, and in what form they are handed on.
#include "windows/window_scan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::ApplicationTraits;
using simulated::SimulatedDesktop;
using test::applicationOf;
using test::elementOf;
using testing::ElementsAre;
using testing::IsEmpty;

WindowScan scanOf(SimulatedDesktop& desktop, ProcessId pid) {
  WindowScan scan(desktop.interfaces());
  scan.add(*applicationOf(desktop, pid));
  return scan;
}

std::vector<std::int64_t> numbers(const WindowScan& scan) {
  std::vector<std::int64_t> all;
  for (const auto& window : scan.windows()) all.push_back(window.key.windowNumber);
  return all;
}

std::vector<std::string> identities(const WindowScan& scan) {
  std::vector<std::string> all;
  for (const auto& window : scan.windows()) all.emplace_back(window.windowIdentity);
  return all;
}

TEST(ManagedWindows, AreInTheOrderInWhichTheApplicationListsThem) {
  const auto desktop =
      test::laptop().app(100).window(3).window(1).window(2).attribute(AttributeName::role, std::string("AXSheet")).window(4).build();

  EXPECT_THAT(numbers(scanOf(*desktop, 100)), ElementsAre(3, 1, 4));
}

TEST(ManagedWindows, CarryTheirProcessElementScreenAndNames) {
  const auto desktop = test::twoScreens().app(100, "com.example.notes").window(1, {.frame = test::onSecondScreen, .number = 70}).build();

  const auto scan = scanOf(*desktop, 100);
  const auto& windows = scan.windows();

  ASSERT_EQ(windows.size(), 1);
  EXPECT_EQ(windows[0].key, (WindowKey{100, 70}));
  EXPECT_EQ(windows[0].window, elementOf(*desktop, 100));
  EXPECT_EQ(windows[0].screen, desktop->screens().screens().at(1));
  EXPECT_EQ(windows[0].appIdentifier, "com.example.notes");
  EXPECT_EQ(windows[0].windowIdentity, "role:axwindow||axstandardwindow");
}

TEST(ManagedWindows, HaveNoIdentityWhereNamesDoNotMatter) {
  const auto desktop = test::laptop().app(100, "com.example.notes").window(1).app(200, "com.example.mail").window(2).build();
  WindowScan scan(desktop->interfaces(), [](std::string_view application) { return application == "com.example.mail"; });

  scan.add(*applicationOf(*desktop, 100));
  scan.add(*applicationOf(*desktop, 200));

  EXPECT_THAT(numbers(scan), ElementsAre(1, 2));
  EXPECT_THAT(identities(scan), ElementsAre("", "role:axwindow||axstandardwindow"));
}

TEST(ManagedWindows, AreNamedTogether) {
  const auto desktop = test::laptop()
                           .app(100)
                           .window(1, {.title = " Draft "})
                           .window(2, {.title = "  "})
                           .window(3)
                           .attribute(AttributeName::identifier, std::string(" Inspector "))
                           .window(4)
                           .attribute(AttributeName::subrole, std::nullopt)
                           .build();

  EXPECT_THAT(identities(scanOf(*desktop, 100)), ElementsAre("title:draft", "title:<untitled>", "axid:inspector", "role:axwindow||<none>"));
}

TEST(ManagedWindows, OnlyThoseThatAreManagedCountForTheNames) {
  const auto desktop = test::laptop().app(100).window(1).window(2).attribute(AttributeName::minimized, true).build();

  EXPECT_THAT(identities(scanOf(*desktop, 100)), ElementsAre("role:axwindow||axstandardwindow"));
}

TEST(ManagedWindows, OfOneKeyShareTheIdentityOfTheLastOne) {
  const auto desktop = test::laptop().app(100).window(1, {.title = "First", .number = 7}).window(2, {.title = "Last", .number = 7}).build();

  const auto scan = scanOf(*desktop, 100);

  EXPECT_THAT(numbers(scan), ElementsAre(7, 7));
  EXPECT_THAT(identities(scan), ElementsAre("title:last", "title:last"));
}

TEST(ManagedWindows, OfSeveralApplicationsFollowEachOther) {
  const auto desktop =
      test::laptop().app(100).window(1).window(2, {.number = 1}).app(200).window(3, {.number = 1}).app(300).window(4).build();
  WindowScan scan(desktop->interfaces());

  for (const ProcessId pid : {300, 100, 200}) scan.add(*applicationOf(*desktop, pid));

  EXPECT_THAT(numbers(scan), ElementsAre(4, 1, 1, 1));
  EXPECT_THAT(scan.keys(), testing::UnorderedElementsAre(WindowKey{300, 4}, WindowKey{100, 1}, WindowKey{200, 1}));
  EXPECT_EQ(scan.windows().at(0).appIdentifier, "pid:300");
  EXPECT_EQ(scan.windows().at(3).windowIdentity, "role:axwindow||axstandardwindow");
}

TEST(ManagedWindows, OfAHiddenApplicationAreStillListed) {
  const auto desktop = test::laptop().app(100, ApplicationTraits{.hidden = true}).window(1).build();

  EXPECT_THAT(numbers(scanOf(*desktop, 100)), ElementsAre(1));
}

TEST(ManagedWindows, AreNoneWhenTheListCannotBeRead) {
  const auto desktop = test::laptop().app(100).window(1).build();

  desktop->setWindowsUnreadable(100, true);

  EXPECT_THAT(scanOf(*desktop, 100).windows(), IsEmpty());
}

TEST(ManagedWindows, AreNoneWithoutScreens) {
  const auto desktop = simulated::desktop().app(100).window(1).build();

  EXPECT_THAT(scanOf(*desktop, 100).windows(), IsEmpty());
}

TEST(ManagedWindows, ThatAreNotListedAreNotFound) {
  const auto desktop = test::laptop().app(100).window(1).window(2, {.listed = false}).build();

  EXPECT_THAT(numbers(scanOf(*desktop, 100)), ElementsAre(1));
}

}  // namespace
}  // namespace tilora
