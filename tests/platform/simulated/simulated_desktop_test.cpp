// What the simulated desktop answers, and what it does with writes.
#include "platform/simulated/simulated_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/simulated/builder.h"

namespace tilora::simulated {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Element windowOf(SimulatedDesktop& simulated, ProcessId pid, std::size_t index) {
  const auto value = simulated.interfaces().accessibility.applicationElement(pid)->value(AttributeName::windows);
  return std::get<std::vector<Element>>(value.value()).at(index);
}

std::vector<std::uint64_t> hashes(SimulatedDesktop& simulated, ProcessId pid) {
  std::vector<std::uint64_t> all;
  const auto value = simulated.interfaces().accessibility.applicationElement(pid)->value(AttributeName::windows);
  for (const auto& element : std::get<std::vector<Element>>(value.value())) all.push_back(element->hash());
  return all;
}

TEST(SimulatedDesktop, AWriteToASettableAttributeIsStoredAndReported) {
  const auto simulated = desktop().app(100).window(1).build();
  const auto window = windowOf(*simulated, 100, 0);

  window->set(AttributeName::position, BoxedValue{Point{10, 35}, nullptr});

  EXPECT_EQ(window->value(AttributeName::position), AttributeValue(Point{10, 35}));
  EXPECT_THAT(simulated->takeEffects(), ElementsAre(moved(1, 10, 35)));
}

TEST(SimulatedDesktop, AWriteToAnAttributeThatIsNotSettableIsOnlyReported) {
  const auto simulated = desktop().app(100).window(1, {.resizable = false}).build();
  const auto window = windowOf(*simulated, 100, 0);

  window->set(AttributeName::size, BoxedValue{Size{1, 2}, nullptr});

  EXPECT_EQ(window->value(AttributeName::size), AttributeValue(Size{400, 300}));
  EXPECT_THAT(simulated->takeEffects(), ElementsAre(resized(1, 1, 2)));
}

TEST(SimulatedDesktop, AFailingSettabilityQueryStoresNothing) {
  const auto simulated = desktop().app(100).window(1).settable(AttributeName::hidden, Settability::error).build();
  const auto window = windowOf(*simulated, 100, 0);

  window->set(AttributeName::hidden, true);

  EXPECT_EQ(window->isSettable(AttributeName::hidden), std::nullopt);
  EXPECT_EQ(window->value(AttributeName::hidden), std::nullopt);
  EXPECT_THAT(simulated->takeEffects(), ElementsAre(windowHidden(1, true)));
}

TEST(SimulatedDesktop, AWrittenTruthValueReadsBackAsANumberObject) {
  const auto simulated = desktop().app(100).window(1).settable(AttributeName::hidden).build();
  const auto window = windowOf(*simulated, 100, 0);

  window->set(AttributeName::hidden, true);

  EXPECT_TRUE(std::get<Number>(window->value(AttributeName::hidden).value()).toBool());
}

TEST(SimulatedDesktop, AClosedWindowIsNeitherReadNorWritten) {
  const auto simulated = desktop().app(100).window(1).front(100, 1).build();
  const auto window = windowOf(*simulated, 100, 0);

  simulated->close(1);
  window->set(AttributeName::hidden, true);

  EXPECT_EQ(window->value(AttributeName::role), std::nullopt);
  EXPECT_EQ(window->isSettable(AttributeName::position), std::nullopt);
  EXPECT_THAT(hashes(*simulated, 100), IsEmpty());
  EXPECT_EQ(simulated->interfaces().accessibility.applicationElement(100)->value(AttributeName::focusedWindow), std::nullopt);
  EXPECT_THAT(simulated->takeEffects(), IsEmpty());
}

TEST(SimulatedDesktop, AWindowGoesWhereItIsInserted) {
  const auto simulated = desktop().app(100).window(1).window(2).build();

  simulated->addWindow(3, 100, WindowTraits{.hash = 3, .at = 0});
  simulated->addWindow(4, 100, WindowTraits{.hash = 4, .at = 2});

  EXPECT_THAT(hashes(*simulated, 100), ElementsAre(3, 1, 4, 2));
}

TEST(SimulatedDesktop, TheOrderOfAThousandWindowsSurvivesInsertingAndClosing) {
  const auto simulated = desktop().app(100).build();
  std::vector<std::uint64_t> expected;
  for (std::uint64_t id = 1; id <= 1000; ++id) {
    const std::size_t at = id * 7919 % (expected.size() + 1);
    simulated->addWindow(id, 100, WindowTraits{.hash = id, .at = at});
    expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(at), id);
    if (id % 3 == 0) {
      simulated->close(expected.at(expected.size() / 2));
      expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(expected.size() / 2));
    }
  }
  EXPECT_EQ(hashes(*simulated, 100), expected);
}

TEST(SimulatedDesktop, AnUnlistedWindowCanHaveTheFocus) {
  const auto simulated = desktop().app(100).window(1).window(2, {.listed = false}).front(100, 2).build();

  const auto focused = simulated->interfaces().accessibility.applicationElement(100)->value(AttributeName::focusedWindow);

  EXPECT_THAT(hashes(*simulated, 100), ElementsAre(1));
  EXPECT_EQ(std::get<Element>(focused.value())->hash(), 2);
}

TEST(SimulatedDesktop, UnreadableWindowsHideTheListAndNothingElse) {
  const auto simulated = desktop().app(100).window(1).front(100, 1).build();

  simulated->setWindowsUnreadable(100, true);

  const auto application = simulated->interfaces().accessibility.applicationElement(100);
  EXPECT_EQ(application->value(AttributeName::windows), std::nullopt);
  EXPECT_TRUE(application->value(AttributeName::focusedWindow).has_value());
}

TEST(SimulatedDesktop, AnApplicationThatQuitsTakesItsWindowsAndTheFrontAlong) {
  const auto simulated = desktop().app(100).window(1).window(2, {.listed = false}).app(200).front(100, 1).build();
  auto& workspace = simulated->interfaces().workspace;

  simulated->quit(100);

  EXPECT_EQ(workspace.frontmostApplication(), nullptr);
  EXPECT_EQ(workspace.applicationWithProcessIdentifier(100), nullptr);
  EXPECT_EQ(workspace.runningApplications().size(), 1);
  EXPECT_EQ(simulated->window(1), nullptr);
  EXPECT_EQ(simulated->window(2), nullptr);
}

TEST(SimulatedDesktop, ALingeringApplicationStaysListedAsTerminated) {
  const auto simulated = desktop().app(100).window(1).build();

  simulated->quit(100, true);

  const auto application = simulated->interfaces().workspace.applicationWithProcessIdentifier(100);
  ASSERT_NE(application, nullptr);
  EXPECT_TRUE(application->isTerminated());
  EXPECT_THAT(hashes(*simulated, 100), IsEmpty());
}

TEST(SimulatedDesktop, TheElementOfAProcessThatIsGoneReadsNothing) {
  const auto simulated = desktop().build();

  const auto element = simulated->interfaces().accessibility.applicationElement(4711);

  ASSERT_NE(element, nullptr);
  EXPECT_EQ(element->value(AttributeName::windows), std::nullopt);
}

TEST(SimulatedDesktop, TheWindowServerAnswersForTheFirstDeclaredWindowOfANumber) {
  const auto simulated = desktop()
                             .app(100)
                             .window(1, {.number = 7})
                             .window(2, {.number = 7, .server = WindowServerEntry{100, Rect{0, 0, 20, 20}}})
                             .window(3, {.number = 7, .server = WindowServerEntry{100, Rect{0, 0, 30, 30}}})
                             .build();
  auto& server = simulated->interfaces().windowServer;

  EXPECT_EQ(server.entries(7).at(0).bounds, (Rect{0, 0, 20, 20}));
  EXPECT_THAT(server.entries(8), IsEmpty());
  simulated->setAttribute(2, AttributeName::windowNumber, Number(std::int64_t{8}));
  EXPECT_EQ(server.entries(7).at(0).bounds, (Rect{0, 0, 30, 30}));
  EXPECT_EQ(server.entries(8).at(0).bounds, (Rect{0, 0, 20, 20}));
  simulated->setAttribute(2, AttributeName::windowNumber, Number(7.9));
  EXPECT_EQ(server.entries(7).at(0).bounds, (Rect{0, 0, 20, 20}));
  simulated->close(2);
  simulated->close(3);
  EXPECT_THAT(server.entries(7), IsEmpty());
}

TEST(SimulatedDesktop, TheFirstScreenIsMainUntilAnotherIsSaid) {
  const auto simulated = desktop().screen(1, {0, 0, 10, 10}, {0, 0, 10, 9}).screen(2, {10, 0, 10, 10}, {10, 0, 10, 9}).build();
  auto& screens = simulated->screens();

  EXPECT_EQ(screens.mainScreen(), screens.screens().at(0));
  screens.setMain(2);
  EXPECT_EQ(screens.mainScreen(), screens.screens().at(1));
  screens.remove(2);
  EXPECT_EQ(screens.mainScreen(), nullptr);
  screens.set(2, Screen{{20, 0, 10, 10}, {20, 0, 10, 9}, std::nullopt});
  EXPECT_EQ(screens.mainScreen(), screens.screens().at(1));
  screens.setMain(std::nullopt);
  EXPECT_EQ(screens.mainScreen(), nullptr);
}

TEST(SimulatedDesktop, AScreenOfAKnownIdIsReplacedInPlace) {
  const auto simulated = desktop().screen(1, {0, 0, 10, 10}, {0, 0, 10, 9}).screen(2, {10, 0, 10, 10}, {10, 0, 10, 9}).build();

  simulated->screens().set(1, Screen{{0, 0, 5, 5}, {0, 0, 5, 5}, std::nullopt});

  ASSERT_EQ(simulated->screens().screens().size(), 2);
  EXPECT_EQ(simulated->screens().screens().at(0)->frame, (Rect{0, 0, 5, 5}));
}

TEST(SimulatedDesktop, ACombinationIsHadOnceAndNotFromAnotherApplication) {
  const auto simulated = desktop().build();
  auto& hotKeys = simulated->hotKeys();
  std::vector<std::uint32_t> pressed;
  const auto handler = hotKeys.installHandler([&](std::uint32_t id) { pressed.push_back(id); });

  const auto first = hotKeys.registerHotKey(1, 33, 2560);
  EXPECT_TRUE(first.has_value());
  EXPECT_FALSE(hotKeys.registerHotKey(2, 33, 2560).has_value());
  hotKeys.setTaken({33, 2560}, true);
  hotKeys.press({33, 2560});
  hotKeys.unregisterHotKey(first.value());
  hotKeys.press({33, 2560});
  EXPECT_FALSE(hotKeys.registerHotKey(3, 33, 2560).has_value());
  hotKeys.setTaken({33, 2560}, false);
  EXPECT_TRUE(hotKeys.registerHotKey(4, 33, 2560).has_value());

  EXPECT_THAT(pressed, ElementsAre(1));
  EXPECT_THAT(simulated->takeEffects(),
              ElementsAre(HotKeyRegistered{1, 33, 2560, true}, HotKeyRegistered{2, 33, 2560, false}, HotKeyUnregistered{1},
                          HotKeyRegistered{3, 33, 2560, false}, HotKeyRegistered{4, 33, 2560, true}));
}

TEST(SimulatedDesktop, AFailingLoginItemLeavesTheStatusAsItIs) {
  const auto simulated = desktop().build();
  auto& login = simulated->loginItem();
  login.traits = {.status = LoginItemStatus::notFound, .registerError = "no"};

  EXPECT_EQ(login.registerItem(), "no");
  EXPECT_EQ(login.status(), LoginItemStatus::notFound);
  EXPECT_EQ(login.unregisterItem(), std::nullopt);
  EXPECT_EQ(login.status(), LoginItemStatus::notRegistered);
  EXPECT_THAT(simulated->takeEffects(), ElementsAre(LoginItemRegistered{false}, LoginItemUnregistered{true}));
}

TEST(SimulatedDesktop, AKeyReachesTheMonitorWhileItIsInstalled) {
  const auto simulated = desktop().build();
  auto& monitor = simulated->keyMonitor();

  EXPECT_FALSE(monitor.press({49, 0}));
  auto token = monitor.install([](const KeyEvent& event) { return event.keyCode == 49; });
  EXPECT_TRUE(monitor.press({49, 0}));
  EXPECT_FALSE(monitor.press({50, 0}));
  token->reset();
  EXPECT_FALSE(monitor.press({49, 0}));

  EXPECT_THAT(simulated->takeEffects(), ElementsAre(KeyMonitorInstalled{}, KeyMonitorRemoved{}));
}

TEST(SimulatedDesktop, ObserversAreToldOnTheMainQueueUntilTheirSubscriptionEnds) {
  const auto simulated = desktop().build();
  int told = 0;
  auto token = simulated->interfaces().workspace.observe(WorkspaceEvent::activated, [&] { ++told; });

  simulated->notify(WorkspaceEvent::activated);
  simulated->notify(WorkspaceEvent::launched);
  EXPECT_EQ(told, 0);
  simulated->clock().runPosted();
  EXPECT_EQ(told, 1);

  simulated->notify(WorkspaceEvent::activated);
  token.reset();
  simulated->clock().runPosted();
  EXPECT_EQ(told, 1);
}

TEST(SimulatedDesktop, AStoredFalseIsThere) {
  const auto simulated = desktop().setting("flag", false).build();

  EXPECT_TRUE(simulated->settings().contains("flag"));
  EXPECT_FALSE(simulated->settings().boolValue("flag"));
  EXPECT_FALSE(simulated->settings().contains("other"));
  simulated->settings().put("flag", std::nullopt);
  EXPECT_FALSE(simulated->settings().contains("flag"));
}

}  // namespace
}  // namespace tilora::simulated
