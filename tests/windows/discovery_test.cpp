// Which applications are scanned, which of their windows are managed, and which window has the focus.
#include "windows/discovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"
#include "support/named_case.h"
#include "windows/window_scan.h"

namespace tilora {
namespace {

using simulated::ApplicationTraits;
using simulated::Settability;
using simulated::SimulatedDesktop;
using test::applicationOf;
using test::elementOf;
using testing::ElementsAre;

std::vector<ProcessId> scanned(SimulatedDesktop& desktop) {
  std::vector<ProcessId> pids;
  for (const auto& application : scannedApplications(desktop.interfaces())) pids.push_back(application->processIdentifier());
  return pids;
}

TEST(ScannedApplications, AreTheRegularOnesInTheirOrder) {
  const auto desktop = test::laptop()
                           .app(300)
                           .app(100, ApplicationTraits{.policy = ActivationPolicy::accessory})
                           .app(200, ApplicationTraits{.hidden = true})
                           .app(400, ApplicationTraits{.policy = ActivationPolicy::prohibited})
                           .app(50)
                           .build();

  EXPECT_THAT(scanned(*desktop), ElementsAre(300, 200, 50));
}

TEST(ScannedApplications, LeaveOutThisProgram) {
  const auto desktop = test::laptop().app(100).ownApp(200).build();

  EXPECT_THAT(scanned(*desktop), ElementsAre(100));
}

TEST(ScannedApplications, LeaveOutThoseThatHaveEnded) {
  const auto desktop = test::laptop().app(100).app(200).build();

  desktop->quit(100, true);

  EXPECT_THAT(scanned(*desktop), ElementsAre(200));
}

/// A window that differs from a standard one in one attribute or one settability.
struct EligibilityCase {
  std::string name;
  AttributeName attribute;
  std::optional<AttributeValue> value;
  std::optional<Settability> positionSettable;
  bool isEligible;
};

class Eligibility : public testing::TestWithParam<EligibilityCase> {};

TEST_P(Eligibility, IsForStandardWindowsThatCanBeMoved) {
  const auto& changed = GetParam();
  const auto desktop = test::laptop().app(100).window(1).attribute(changed.attribute, changed.value).build();
  if (changed.positionSettable) desktop->setSettable(1, AttributeName::position, *changed.positionSettable);

  EXPECT_EQ(isEligible(*elementOf(*desktop, 100)), changed.isEligible);
  WindowScan scan(desktop->interfaces());
  scan.add(*applicationOf(*desktop, 100));
  EXPECT_EQ(scan.windows().size(), changed.isEligible ? 1 : 0);
}

const AttributeValue anyTitle = std::string("Notes");

INSTANTIATE_TEST_SUITE_P(Windows, Eligibility,
                         testing::Values(EligibilityCase{"Standard", AttributeName::title, anyTitle, {}, true},
                                         EligibilityCase{"UnreadableRole", AttributeName::role, std::nullopt, {}, false},
                                         EligibilityCase{"RoleOfAnotherType", AttributeName::role, Number(std::int64_t{1}), {}, false},
                                         EligibilityCase{"Sheet", AttributeName::role, std::string("AXSheet"), {}, false},
                                         EligibilityCase{"RoleInAnotherCase", AttributeName::role, std::string("axwindow"), {}, false},
                                         EligibilityCase{"UnreadableSubrole", AttributeName::subrole, std::nullopt, {}, true},
                                         EligibilityCase{"SubroleOfAnotherType", AttributeName::subrole, ForeignValue{}, {}, true},
                                         EligibilityCase{"Dialog", AttributeName::subrole, std::string("AXDialog"), {}, false},
                                         EligibilityCase{"EmptySubrole", AttributeName::subrole, std::string(), {}, false},
                                         EligibilityCase{"Minimised", AttributeName::minimized, true, {}, false},
                                         EligibilityCase{
                                             "MinimisedAsANumber", AttributeName::minimized, Number(std::int64_t{1}), {}, false},
                                         EligibilityCase{"NotMinimised", AttributeName::minimized, Number(std::int64_t{0}), {}, true},
                                         EligibilityCase{"UnreadableMinimised", AttributeName::minimized, std::nullopt, {}, true},
                                         EligibilityCase{"MinimisedOfAnotherType", AttributeName::minimized, std::string("true"), {}, true},
                                         EligibilityCase{"NotMovable", AttributeName::title, anyTitle, Settability::no, false},
                                         EligibilityCase{"MovableUnknown", AttributeName::title, anyTitle, Settability::error, false},
                                         EligibilityCase{"UnreadablePosition", AttributeName::position, std::nullopt, {}, true},
                                         EligibilityCase{"Hidden", AttributeName::hidden, true, {}, true}),
                         test::caseName);

TEST(FocusedWindow, IsWhatTheFrontmostApplicationTells) {
  const auto desktop = test::laptop().app(100, "com.example.notes").window(1, {.number = 70}).app(200).window(2).front(100, 1).build();

  const auto focused = focusedWindow(desktop->interfaces());

  ASSERT_TRUE(focused.has_value());
  EXPECT_EQ(focused->window, elementOf(*desktop, 100));
  EXPECT_EQ(focused->key, (WindowKey{100, 70}));
  EXPECT_EQ(focused->appIdentifier, "com.example.notes");
}

TEST(FocusedWindow, NeedsNotBeEligibleOrListed) {
  const auto desktop = test::laptop()
                           .app(100)
                           .window(1, {.listed = false})
                           .attribute(AttributeName::role, std::string("AXSheet"))
                           .attribute(AttributeName::windowNumber, std::nullopt)
                           .front(100, 1)
                           .build();

  EXPECT_EQ(focusedWindow(desktop->interfaces()).value().key, (WindowKey{100, 1}));
}

TEST(FocusedWindow, OfAnAccessoryApplicationCounts) {
  const auto desktop = test::laptop().app(100, ApplicationTraits{.policy = ActivationPolicy::accessory}).window(1).front(100, 1).build();

  EXPECT_TRUE(focusedWindow(desktop->interfaces()).has_value());
}

TEST(FocusedWindow, IsNoneWithoutAFrontmostApplication) {
  const auto desktop = test::laptop().app(100).window(1).build();

  EXPECT_FALSE(focusedWindow(desktop->interfaces()).has_value());
}

TEST(FocusedWindow, IsNoneWhileThisProgramIsFrontmost) {
  const auto desktop = test::laptop().ownApp(100).window(1).front(100, 1).build();

  EXPECT_FALSE(focusedWindow(desktop->interfaces()).has_value());
}

TEST(FocusedWindow, IsNoneWhenTheFrontmostApplicationTellsNone) {
  const auto desktop = test::laptop().app(100).window(1).front(100).build();

  EXPECT_FALSE(focusedWindow(desktop->interfaces()).has_value());
}

TEST(FocusedWindowDeathTest, AHashBeyondTheSignedRangeIsFatal) {
  constexpr simulated::WindowId tooLarge = std::uint64_t{1} << 63;
  const auto desktop =
      test::laptop().app(100).window(tooLarge).attribute(AttributeName::windowNumber, std::nullopt).front(100, tooLarge).build();

  EXPECT_DEATH(focusedWindow(desktop->interfaces()), "");
}

}  // namespace
}  // namespace tilora
