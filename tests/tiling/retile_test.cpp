// What one pass over the desktop does.
#include "tiling/retile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "support/desktops.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using simulated::ApplicationHidden;
using simulated::ApplicationTraits;
using simulated::ApplicationUnhidden;
using simulated::Effect;
using simulated::moved;
using simulated::resized;
using simulated::Settability;
using simulated::windowHidden;
using test::focus;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using enum WindowPlacement;

/// A desktop and the memory of an engine that makes passes over it.
class Engine {
 public:
  explicit Engine(simulated::DesktopBuilder& builder) : desktop(builder.build()) {}
  explicit Engine(simulated::DesktopBuilder&& builder) : Engine(builder) {}

  std::vector<Effect> pass() {
    retile(desktop->interfaces(), memory, test::gap);
    return desktop->takeEffects();
  }
  /// A pass after the user turned to a window.
  std::vector<Effect> passWithFocus(ProcessId pid, simulated::WindowId window) {
    focus(*desktop, pid, window);
    return pass();
  }

  std::unique_ptr<simulated::SimulatedDesktop> desktop;
  PlacementMemory memory;
};

/// The frames of the three tiled placements on the laptop's screen.
std::vector<Effect> placedFull(simulated::WindowId window) { return {moved(window, 10, 35), resized(window, 1420, 855)}; }
std::vector<Effect> placedLeft(simulated::WindowId window) { return {moved(window, 10, 35), resized(window, 705, 855)}; }
std::vector<Effect> placedRight(simulated::WindowId window) { return {moved(window, 725, 35), resized(window, 705, 855)}; }

std::vector<Effect> operator+(std::vector<Effect> effects, const std::vector<Effect>& more) {
  effects.insert(effects.end(), more.begin(), more.end());
  return effects;
}

/// Three applications of one window each: 100 with 1, 200 with 2, 300 with 3.
simulated::DesktopBuilder threeApplications() {
  auto builder = test::laptop();
  builder.app(100).window(1).app(200).window(2).app(300).window(3);
  return builder;
}

TEST(Retile, AnOnlyWindowFillsItsScreen) {
  Engine engine(test::laptop().app(100).window(1).front(100, 1));

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1)));
  EXPECT_THAT(engine.memory.windowPlacements(), IsEmpty());
}

TEST(Retile, AnOnlyWindowIsShownAlsoWithoutTheFocus) {
  Engine engine(test::laptop().app(100).window(1));

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1)));
}

TEST(Retile, AFrameIsWrittenOnEveryPass) {
  Engine engine(test::laptop().app(100).window(1).front(100, 1));
  engine.pass();

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1)));
}

TEST(Retile, APairIsShownAndEverythingElseHidden) {
  Engine engine(threeApplications().front(100, 1));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({200, 2}, right);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedLeft(1) + placedRight(2) + std::vector<Effect>{ApplicationHidden{300}}));
  EXPECT_THAT(engine.memory.windowPairings(),
              UnorderedElementsAre(Pair(WindowKey{100, 1}, WindowKey{200, 2}), Pair(WindowKey{200, 2}, WindowKey{100, 1})));
}

TEST(Retile, AnApplicationThatIsAlreadyHiddenIsNotHiddenAgain) {
  Engine engine(test::laptop().app(100).window(1).app(200, ApplicationTraits{.hidden = true}).window(2).front(100, 1));

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1)));
}

TEST(Retile, AnApplicationComesBackWhenItIsActivated) {
  Engine engine(threeApplications().front(100, 1));
  engine.pass();

  EXPECT_THAT(engine.passWithFocus(200, 2),
              testing::UnorderedElementsAreArray(placedFull(2) + std::vector<Effect>{ApplicationHidden{100}, ApplicationUnhidden{200}}));
}

TEST(Retile, FramesAreWrittenBeforeAnythingIsHiddenOrShown) {
  Engine engine(test::laptop()
                    .app(100)
                    .window(1)
                    .window(2)
                    .settable(AttributeName::hidden)
                    .attribute(AttributeName::hidden, false)
                    .app(200)
                    .window(3)
                    .front(100, 1));

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1) + std::vector<Effect>{ApplicationHidden{200}, windowHidden(2, true)}));
}

TEST(Retile, AFloatingWindowIsNeverMovedByThePass) {
  Engine engine(threeApplications().front(100, 1));
  engine.memory.setPlacement({100, 1}, floatCenter);

  EXPECT_THAT(engine.pass(), UnorderedElementsAre(ApplicationHidden{200}, ApplicationHidden{300}));
}

TEST(Retile, AFloatingWindowIsHiddenWhenItIsNotTheAnchor) {
  Engine engine(test::laptop().app(100).window(1).app(200).window(2).front(200, 2));
  engine.memory.setPlacement({100, 1}, floatCenter);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(2) + std::vector<Effect>{ApplicationHidden{100}}));
}

TEST(Retile, OfTwoWindowsOfOneApplicationOnlyTheFocusedOneIsLaidOut) {
  Engine engine(test::laptop().app(100).window(1).window(2).front(100, 2));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({100, 2}, right);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedRight(2)));
  EXPECT_THAT(engine.memory.visibleWindowKeysByScreen().at("display:1"), UnorderedElementsAre(WindowKey{100, 1}, WindowKey{100, 2}));
}

TEST(Retile, AnApplicationWithWindowsOnTwoScreensIsLaidOutWhereTheFocusIs) {
  Engine engine(test::twoScreens().app(100).window(1).window(2, {.frame = test::onSecondScreen}).front(100, 2));

  EXPECT_THAT(engine.pass(), ElementsAre(moved(2, 1450, 35), resized(2, 1420, 855)));
}

TEST(Retile, EachScreenIsLaidOutOnItsOwn) {
  Engine engine(test::twoScreens()
                    .app(100)
                    .window(1)
                    .app(200)
                    .window(2, {.frame = test::onSecondScreen})
                    .app(300)
                    .window(3, {.frame = test::onSecondScreen})
                    .front(300, 3));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({300, 3}, right);

  EXPECT_THAT(engine.pass(),
              ElementsAreArray(placedLeft(1) + std::vector<Effect>{moved(3, 2165, 35), resized(3, 705, 855), ApplicationHidden{200}}));
}

TEST(Retile, TheUserDraggingATiledWindowStopsThePassBeforeAnythingChanges) {
  Engine engine(threeApplications().front(100, 1));
  engine.memory.setPlacement({9, 9}, left);
  engine.memory.pair({9, 9}, {8, 8});
  engine.desktop->pointer().buttons = 1;

  EXPECT_THAT(engine.pass(), IsEmpty());
  EXPECT_EQ(engine.memory.windowPlacements().size(), 1);
  EXPECT_EQ(engine.memory.windowPairings().size(), 2);
  EXPECT_THAT(engine.memory.visibleWindowKeysByScreen(), IsEmpty());

  engine.desktop->pointer().buttons = 0;
  EXPECT_THAT(engine.pass(), testing::Not(IsEmpty()));
  EXPECT_THAT(engine.memory.windowPlacements(), IsEmpty());
}

TEST(Retile, TheUserDraggingAFloatingWindowDoesNotStopThePass) {
  Engine engine(threeApplications().front(100, 1));
  engine.memory.setPlacement({100, 1}, floatCenter);
  engine.desktop->pointer().buttons = 1;

  EXPECT_THAT(engine.pass(), UnorderedElementsAre(ApplicationHidden{200}, ApplicationHidden{300}));
}

/// A focused window that is none to manage.
struct UnmanagedCase {
  std::string name;
  AttributeName attribute;
  std::optional<AttributeValue> value;
};

class UnmanagedFocus : public testing::TestWithParam<UnmanagedCase> {};

TEST_P(UnmanagedFocus, StopsThePassUntilAStandardWindowHasTheFocus) {
  Engine engine(threeApplications().window(4).attribute(GetParam().attribute, GetParam().value).front(300, 4));
  engine.memory.setPlacement({9, 9}, left);

  EXPECT_THAT(engine.pass(), IsEmpty());
  EXPECT_EQ(engine.memory.windowPlacements().size(), 1);
  EXPECT_THAT(engine.passWithFocus(300, 3), testing::Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(Windows, UnmanagedFocus,
                         testing::Values(UnmanagedCase{"Sheet", AttributeName::role, std::string("AXSheet")},
                                         UnmanagedCase{"Dialog", AttributeName::subrole, std::string("AXDialog")},
                                         UnmanagedCase{"Minimised", AttributeName::minimized, true}),
                         test::caseName);

TEST(Retile, ThisProgramInFrontLeavesWhatWasShown) {
  Engine engine(threeApplications().ownApp(400).window(4).front(200, 2));
  engine.pass();

  EXPECT_THAT(engine.passWithFocus(400, 4), ElementsAreArray(placedFull(2)));
}

TEST(Retile, AWindowThatClosedIsForgottenAndItsPartnerStays) {
  Engine engine(test::laptop().app(100).window(1).app(200).window(2).front(100, 1));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({200, 2}, right);
  engine.pass();

  engine.desktop->close(1);
  engine.desktop->setFrontmost(std::nullopt);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedRight(2)));
  EXPECT_THAT(engine.memory.windowPlacements(), UnorderedElementsAre(Pair(WindowKey{200, 2}, right)));
  EXPECT_THAT(engine.memory.windowPairings(), IsEmpty());
}

TEST(Retile, TheUsersChoiceWinsOverALivePlacement) {
  Engine engine(test::laptop().app(100, "com.example.notes").window(1).front(100, 1));
  engine.memory.setPlacement({100, 1}, right);
  engine.memory.setAppPlacementPreferences({{"com.example.notes||role:axwindow||axstandardwindow", left}});

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedLeft(1)));
}

TEST(Retile, APairThatAChoiceOfTheUserBreaksIsDropped) {
  Engine engine(test::laptop().app(100, "one").window(1).app(200, "two").window(2).front(100, 1));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({200, 2}, right);
  engine.pass();
  engine.memory.setAppPlacementPreferences({{"two", floatCenter}});

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedLeft(1) + std::vector<Effect>{ApplicationHidden{200}}));
  EXPECT_THAT(engine.memory.windowPairings(), IsEmpty());
}

TEST(Retile, APairOnAScreenWithoutTheFocusIsDroppedWhenOneOfItIsNoHalfAnyMore) {
  Engine engine(test::twoScreens()
                    .app(100)
                    .window(1)
                    .app(200)
                    .window(2, {.frame = test::onSecondScreen})
                    .app(300)
                    .window(3, {.frame = test::onSecondScreen})
                    .front(200, 2));
  engine.memory.setPlacement({200, 2}, left);
  engine.memory.setPlacement({300, 3}, right);
  engine.pass();
  EXPECT_EQ(engine.memory.windowPairings().size(), 2);

  engine.memory.setPlacement({300, 3}, full);
  engine.passWithFocus(100, 1);

  EXPECT_THAT(engine.memory.windowPairings(), IsEmpty());
  EXPECT_THAT(engine.memory.visibleWindowKeysByScreen().at("display:2"), UnorderedElementsAre(WindowKey{200, 2}, WindowKey{300, 3}));
}

TEST(Retile, WithoutWindowsTheMemoryIsEmptiedAndNothingSent) {
  Engine engine(test::laptop().app(100).window(1).front(100, 1));
  engine.memory.setPlacement({100, 1}, left);
  engine.pass();
  engine.desktop->close(1);

  EXPECT_THAT(engine.pass(), IsEmpty());
  EXPECT_THAT(engine.memory.windowPlacements(), IsEmpty());
  EXPECT_THAT(engine.memory.visibleWindowKeysByScreen(), IsEmpty());
}

TEST(Retile, AnApplicationWhoseWindowsCannotBeListedContributesNone) {
  Engine engine(threeApplications().front(200, 2));
  engine.desktop->setWindowsUnreadable(100, true);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(2) + std::vector<Effect>{ApplicationHidden{300}}));
}

TEST(Retile, TheGapIsReadAfreshOnEachPass) {
  Engine engine(test::laptop().app(100).window(1).front(100, 1));
  engine.pass();

  retile(engine.desktop->interfaces(), engine.memory, 0);

  EXPECT_THAT(engine.desktop->takeEffects(), ElementsAre(moved(1, 0, 25), resized(1, 1440, 875)));
}

/// What "AXHidden" of a window tells, and whether it is written when the window is to be shown and when it is to be hidden.
struct HiddenCase {
  std::string name;
  Settability settable;
  std::optional<AttributeValue> value;
  bool isWrittenWhenShown;
  bool isWrittenWhenHidden;
};

class HiddenAttribute : public testing::TestWithParam<HiddenCase> {};

TEST_P(HiddenAttribute, IsWrittenUnlessItIsKnownToBeRight) {
  const auto& hidden = GetParam();
  Engine engine(test::laptop()
                    .app(100)
                    .window(1)
                    .window(2)
                    .attribute(AttributeName::hidden, hidden.value)
                    .settable(AttributeName::hidden, hidden.settable));
  const auto writes = [&](simulated::WindowId focused) {
    auto effects = engine.passWithFocus(100, focused);
    std::erase_if(effects,
                  [](const Effect& effect) { return std::get<simulated::AttributeWritten>(effect).name != AttributeName::hidden; });
    engine.desktop->setAttribute(2, AttributeName::hidden, hidden.value);
    return effects;
  };

  EXPECT_THAT(writes(2), ElementsAreArray(hidden.isWrittenWhenShown ? std::vector<Effect>{windowHidden(2, false)} : std::vector<Effect>{}));
  EXPECT_THAT(writes(1), ElementsAreArray(hidden.isWrittenWhenHidden ? std::vector<Effect>{windowHidden(2, true)} : std::vector<Effect>{}));
}

INSTANTIATE_TEST_SUITE_P(Windows, HiddenAttribute,
                         testing::Values(HiddenCase{"Shown", Settability::yes, Number(std::int64_t{0}), false, true},
                                         HiddenCase{"Hidden", Settability::yes, Number(std::int64_t{1}), true, false},
                                         HiddenCase{"ShownAsTruth", Settability::yes, false, false, true},
                                         HiddenCase{"HiddenAsTruth", Settability::yes, true, true, false},
                                         HiddenCase{"Unreadable", Settability::yes, std::nullopt, true, true},
                                         HiddenCase{"AnotherType", Settability::yes, std::string("no"), true, true},
                                         HiddenCase{"NotSettable", Settability::no, Number(std::int64_t{1}), false, false},
                                         HiddenCase{"SettableUnknown", Settability::error, Number(std::int64_t{1}), false, false}),
                         test::caseName);

TEST(Retile, WindowsOfAHiddenApplicationAreLeftAlone) {
  Engine engine(test::laptop()
                    .app(100)
                    .window(1)
                    .app(200)
                    .window(2)
                    .settable(AttributeName::hidden)
                    .window(3)
                    .settable(AttributeName::hidden)
                    .front(100, 1));

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedFull(1) + std::vector<Effect>{ApplicationHidden{200}}));
}

TEST(Retile, AThirdWindowOfAShownApplicationIsHiddenByItself) {
  Engine engine(test::laptop().app(100).window(1).app(200).window(2).window(3).settable(AttributeName::hidden).front(100, 1));
  engine.memory.setPlacement({100, 1}, left);
  engine.memory.setPlacement({200, 2}, right);

  EXPECT_THAT(engine.pass(), ElementsAreArray(placedLeft(1) + std::vector<Effect>{windowHidden(3, true)}));
  EXPECT_THAT(engine.pass(), ElementsAreArray(placedLeft(1)));
}

/// A workspace in which looked-up applications have gone, as if they had quit in the middle of a pass.
class VanishingWorkspace final : public Workspace {
 public:
  explicit VanishingWorkspace(Workspace& workspace) : workspace_(workspace) {}

  std::vector<Application> runningApplications() override { return workspace_.runningApplications(); }
  Application frontmostApplication() override { return workspace_.frontmostApplication(); }
  Application applicationWithProcessIdentifier(ProcessId) override { return nullptr; }
  Subscription observe(WorkspaceEvent event, std::function<void()> callback) override {
    return workspace_.observe(event, std::move(callback));
  }

 private:
  Workspace& workspace_;
};

TEST(Retile, AnApplicationThatVanishesDuringThePassIsPassedOver) {
  Engine engine(threeApplications().front(100, 1));
  auto interfaces = engine.desktop->interfaces();
  VanishingWorkspace workspace(interfaces.workspace);
  const Desktop vanishing = {interfaces.ownProcessId, interfaces.accessibility, workspace,           interfaces.screens,
                             interfaces.pointer,      interfaces.windowServer,  interfaces.trust,    interfaces.hotKeys,
                             interfaces.keyMonitor,   interfaces.loginItem,     interfaces.settings, interfaces.mainQueue,
                             interfaces.shell};

  retile(vanishing, engine.memory, test::gap);

  EXPECT_THAT(engine.desktop->takeEffects(), ElementsAreArray(placedFull(1)));
}

TEST(Retile, AfterEachPassEveryPairIsOfTwoLiveHalves) {
  Engine engine(threeApplications().app(400).window(4).front(100, 1));
  const std::vector<WindowKey> keys = {{100, 1}, {200, 2}, {300, 3}, {400, 4}};
  const std::array placements = {full, left, right, floatCenter};

  for (std::size_t step = 0; step < 256; ++step) {
    const auto& key = keys[step % 4];
    engine.memory.setPlacement(keys[step / 4 % 4], placements[step / 16 % 4]);
    engine.memory.setPlacement(key, placements[step / 64]);
    engine.passWithFocus(key.pid, static_cast<simulated::WindowId>(key.windowNumber));
    for (const auto& [window, partner] : engine.memory.windowPairings()) {
      EXPECT_EQ(engine.memory.windowPairings().at(partner), window);
      EXPECT_EQ(oppositeOf(engine.memory.placementOf(window)), engine.memory.placementOf(partner)) << step;
    }
  }
}

}  // namespace
}  // namespace tilora
