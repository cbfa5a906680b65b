// What any desktop must do for the engine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "tested_desktop.h"
#include "windows/attribute_readers.h"
#include "windows/discovery.h"
#include "windows/frame_writer.h"
#include "windows/screen_keys.h"

namespace tilora::contract {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr std::uint32_t leftBracket = 33;
constexpr std::uint32_t optionShift = 0xA00;
constexpr ProcessId nobody = std::numeric_limits<ProcessId>::max();

class DesktopContract : public testing::TestWithParam<DesktopKind> {
 protected:
  /// The first window that an application lists, once it lists one.
  Element windowOf(ProcessId pid) {
    Element window;
    EXPECT_TRUE(eventually([&] {
      const auto windows = readElements(*parts_.accessibility.applicationElement(pid), AttributeName::windows);
      if (windows && !windows->empty()) window = windows->front();
      return window != nullptr;
    }));
    return window;
  }
  Application applicationOf(ProcessId pid) { return parts_.workspace.applicationWithProcessIdentifier(pid); }
  bool isRunning(ProcessId pid) {
    const auto all = parts_.workspace.runningApplications();
    return std::any_of(all.begin(), all.end(), [&](const auto& application) { return application->processIdentifier() == pid; });
  }
  bool isFrontmost(ProcessId pid) {
    const auto front = parts_.workspace.frontmostApplication();
    return front && front->processIdentifier() == pid;
  }
  bool eventually(const std::function<bool()>& holds) { return desktop_->eventually(holds); }
  /// How often an event has been told since this was made.
  Subscription counting(WorkspaceEvent event, int& count) {
    return parts_.workspace.observe(event, [&count] { ++count; });
  }

  std::unique_ptr<TestedDesktop> desktop_ = GetParam().make();
  Desktop parts_ = desktop_->interfaces();
};

TEST_P(DesktopContract, AnApplicationIsRunningAndOrdinary) {
  const auto pid = desktop_->open("Notes");
  ASSERT_TRUE(eventually([&] { return isRunning(pid); }));
  const auto application = applicationOf(pid);
  ASSERT_TRUE(application);
  EXPECT_EQ(application->processIdentifier(), pid);
  EXPECT_EQ(application->activationPolicy(), ActivationPolicy::regular);
  EXPECT_FALSE(application->isTerminated());
  EXPECT_FALSE(application->isHidden());
  EXPECT_TRUE(application->bundleIdentifier() || application->localizedName());
}

TEST_P(DesktopContract, AProcessThatIsNoApplicationIsNone) {
  EXPECT_EQ(applicationOf(nobody), nullptr);
  const auto element = parts_.accessibility.applicationElement(nobody);
  ASSERT_TRUE(element);
  EXPECT_TRUE(readElements(*element, AttributeName::windows).value_or(std::vector<Element>{}).empty());
  EXPECT_EQ(readElement(*element, AttributeName::focusedWindow), nullptr);
}

TEST_P(DesktopContract, AnOrdinaryWindowIsEligible) {
  const auto window = windowOf(desktop_->open("Notes"));
  ASSERT_TRUE(window);
  EXPECT_TRUE(eventually([&] { return isEligible(*window); }));
  EXPECT_EQ(readString(*window, AttributeName::title), "Notes");
  EXPECT_NE(screenOf(*window, parts_.screens), nullptr);
}

TEST_P(DesktopContract, TheWindowThatTheUserTurnedToHasTheFocus) {
  const auto first = desktop_->open("First");
  const auto second = desktop_->open("Second");
  EXPECT_TRUE(eventually([&] { return isFrontmost(second); }));
  desktop_->activate(first);
  ASSERT_TRUE(eventually([&] { return isFrontmost(first); }));
  std::optional<FocusedWindow> focused;
  ASSERT_TRUE(eventually([&] { return (focused = focusedWindow(parts_)).has_value(); }));
  EXPECT_EQ(focused->key.pid, first);
  EXPECT_EQ(focused->key.windowNumber, windowNumberOf(*windowOf(first)));
}

TEST_P(DesktopContract, AnElementIsKnownByItsHashAndNumber) {
  const auto first = desktop_->open("First");
  const auto second = desktop_->open("Second");
  EXPECT_EQ(windowOf(first)->hash(), windowOf(first)->hash());
  EXPECT_EQ(windowNumberOf(*windowOf(first)), windowNumberOf(*windowOf(first)));
  EXPECT_NE(windowNumberOf(*windowOf(first)), windowNumberOf(*windowOf(second)));
}

TEST_P(DesktopContract, AFrameThatWasWrittenIsTheWindowsFrame) {
  const auto window = windowOf(desktop_->open("Notes"));
  ASSERT_TRUE(window);
  writeFrame(parts_.accessibility, *window, {120, 140}, {500, 360});
  const auto hasFrame = [&] {
    return readPoint(*window, AttributeName::position) == Point{120, 140} && readSize(*window, AttributeName::size) == Size{500, 360};
  };
  EXPECT_TRUE(eventually(hasFrame));
}

TEST_P(DesktopContract, PositionAndSizeOfAnOrdinaryWindowCanBeSet) {
  const auto window = windowOf(desktop_->open("Notes"));
  ASSERT_TRUE(window);
  EXPECT_EQ(window->isSettable(AttributeName::position), true);
  EXPECT_EQ(window->isSettable(AttributeName::size), true);
}

TEST_P(DesktopContract, AnApplicationIsHiddenUntilItIsShown) {
  const auto pid = desktop_->open("Notes");
  desktop_->open("Other");
  (void)windowOf(pid);
  applicationOf(pid)->hide();
  EXPECT_TRUE(eventually([&] { return applicationOf(pid)->isHidden(); }));
  applicationOf(pid)->unhide();
  EXPECT_TRUE(eventually([&] { return !applicationOf(pid)->isHidden(); }));
  EXPECT_NE(windowOf(pid), nullptr);
}

TEST_P(DesktopContract, AClosedWindowReadsNothingAndTakesNothing) {
  const auto pid = desktop_->open("Notes");
  const auto window = windowOf(pid);
  ASSERT_TRUE(window);
  desktop_->closeWindow(pid);
  EXPECT_TRUE(eventually([&] { return !window->value(AttributeName::role); }));
  EXPECT_EQ(window->isSettable(AttributeName::position).value_or(false), false);
  writeFrame(parts_.accessibility, *window, {120, 140}, {500, 360});
  window->set(AttributeName::hidden, true);
  EXPECT_FALSE(isEligible(*window));
}

TEST_P(DesktopContract, AnApplicationThatEndsIsNoLongerRunning) {
  const auto pid = desktop_->open("Notes");
  (void)windowOf(pid);
  desktop_->quit(pid);
  EXPECT_TRUE(eventually([&] { return !isRunning(pid); }));
  EXPECT_FALSE(isFrontmost(pid));
}

TEST_P(DesktopContract, ObserversAreToldUntilTheyEnd) {
  int launched = 0;
  int terminated = 0;
  int afterwards = 0;
  const auto first = counting(WorkspaceEvent::launched, launched);
  const auto second = counting(WorkspaceEvent::terminated, terminated);
  auto ended = counting(WorkspaceEvent::launched, afterwards);
  ended.reset();

  const auto pid = desktop_->open("Notes");
  EXPECT_TRUE(eventually([&] { return launched == 1; }));
  desktop_->quit(pid);
  EXPECT_TRUE(eventually([&] { return terminated == 1; }));
  EXPECT_EQ(afterwards, 0);
}

TEST_P(DesktopContract, ObserversAreToldOfTheApplicationThatTheUserTurnsTo) {
  const auto first = desktop_->open("First");
  const auto second = desktop_->open("Second");
  ASSERT_TRUE(eventually([&] { return isFrontmost(second); }));
  int activated = 0;
  const auto observer = counting(WorkspaceEvent::activated, activated);
  desktop_->activate(first);
  EXPECT_TRUE(eventually([&] { return activated > 0 && isFrontmost(first); }));
}

TEST_P(DesktopContract, ScreensHaveTheirVisiblePartInside) {
  const auto screens = parts_.screens.screens();
  ASSERT_FALSE(screens.empty());
  for (const auto& screen : screens) {
    EXPECT_GT(screen->visibleFrame.width, 0);
    EXPECT_GT(screen->visibleFrame.height, 0);
    EXPECT_GE(screen->visibleFrame.minX(), screen->frame.minX());
    EXPECT_GE(screen->visibleFrame.minY(), screen->frame.minY());
    EXPECT_LE(screen->visibleFrame.maxX(), screen->frame.maxX());
    EXPECT_LE(screen->visibleFrame.maxY(), screen->frame.maxY());
  }
}

TEST_P(DesktopContract, AScreenStaysTheSameObjectWhileNothingChanges) {
  const auto before = parts_.screens.screens();
  EXPECT_EQ(parts_.screens.screens(), before);
  const auto main = parts_.screens.mainScreen();
  ASSERT_TRUE(main);
  EXPECT_TRUE(std::count(before.begin(), before.end(), main));
}

TEST_P(DesktopContract, TheHeldPrimaryButtonIsTheLowestBit) {
  EXPECT_EQ(parts_.pointer.pressedButtons() & 1, 0U);
  desktop_->holdButton(true);
  EXPECT_TRUE(eventually([&] { return (parts_.pointer.pressedButtons() & 1) == 1; }));
  desktop_->holdButton(false);
  EXPECT_TRUE(eventually([&] { return (parts_.pointer.pressedButtons() & 1) == 0; }));
}

TEST_P(DesktopContract, AWindowThatNobodyHasIsUnknownToTheWindowServer) {
  EXPECT_TRUE(parts_.windowServer.entries(std::numeric_limits<std::uint32_t>::max()).empty());
}

TEST_P(DesktopContract, TrustIsWhatTheUserSays) {
  EXPECT_TRUE(parts_.trust.isProcessTrusted());
  EXPECT_TRUE(parts_.trust.isProcessTrusted(false));
  desktop_->setTrusted(false);
  EXPECT_FALSE(parts_.trust.isProcessTrusted());
  EXPECT_FALSE(parts_.trust.isProcessTrusted(false));
}

TEST_P(DesktopContract, AShortcutCallsTheHandlerWithItsIdUntilItIsGivenBack) {
  std::vector<std::uint32_t> pressed;
  const auto handler = parts_.hotKeys.installHandler([&](std::uint32_t id) { pressed.push_back(id); });
  ASSERT_TRUE(handler);
  const auto reference = parts_.hotKeys.registerHotKey(3, leftBracket, optionShift);
  ASSERT_TRUE(reference);
  desktop_->pressShortcut();
  EXPECT_TRUE(eventually([&] { return pressed == std::vector<std::uint32_t>{3}; }));
  parts_.hotKeys.unregisterHotKey(*reference);
  const auto again = parts_.hotKeys.registerHotKey(4, leftBracket, optionShift);
  ASSERT_TRUE(again);
  desktop_->pressShortcut();
  EXPECT_TRUE(eventually([&] { return pressed == std::vector<std::uint32_t>({3, 4}); }));
  parts_.hotKeys.unregisterHotKey(*again);
}

TEST_P(DesktopContract, AShortcutCanBeHadOnce) {
  const auto reference = parts_.hotKeys.registerHotKey(1, leftBracket, optionShift);
  ASSERT_TRUE(reference);
  EXPECT_FALSE(parts_.hotKeys.registerHotKey(2, leftBracket, optionShift));
  parts_.hotKeys.unregisterHotKey(*reference);
}

TEST_P(DesktopContract, ASettingReadsAsItWasStored) {
  auto& settings = parts_.settings;
  EXPECT_FALSE(settings.contains("Tilora.Contract"));
  EXPECT_FALSE(settings.boolValue("Tilora.Contract"));
  EXPECT_EQ(settings.doubleValue("Tilora.Contract"), 0);
  EXPECT_EQ(settings.data("Tilora.Contract"), std::nullopt);
  EXPECT_EQ(settings.date("Tilora.Contract"), std::nullopt);

  settings.setBool("Tilora.Contract", false);
  EXPECT_TRUE(settings.contains("Tilora.Contract"));
  EXPECT_FALSE(settings.boolValue("Tilora.Contract"));
  settings.setBool("Tilora.Contract", true);
  EXPECT_TRUE(settings.boolValue("Tilora.Contract"));
  EXPECT_EQ(settings.doubleValue("Tilora.Contract"), 1);
  settings.setDouble("Tilora.Contract", -7.25);
  EXPECT_EQ(settings.doubleValue("Tilora.Contract"), -7.25);
  EXPECT_EQ(settings.data("Tilora.Contract"), std::nullopt);
}

TEST_P(DesktopContract, StoredBytesAndMomentsComeBack) {
  const std::string bytes("{\"a\":\"\0ü\"}", 11);
  parts_.settings.setData("Tilora.Contract", bytes);
  EXPECT_EQ(parts_.settings.data("Tilora.Contract"), bytes);
  EXPECT_EQ(parts_.settings.date("Tilora.Contract"), std::nullopt);
  const std::chrono::system_clock::time_point moment{1700000000s};
  parts_.settings.setDate("Tilora.Contract", moment);
  EXPECT_EQ(parts_.settings.date("Tilora.Contract"), moment);
  EXPECT_EQ(parts_.settings.data("Tilora.Contract"), std::nullopt);
}

TEST_P(DesktopContract, TheLoginItemCanBeRegisteredAndTakenBack) {
  EXPECT_EQ(parts_.loginItem.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(parts_.loginItem.registerItem(), std::nullopt);
  EXPECT_EQ(parts_.loginItem.status(), LoginItemStatus::enabled);
  EXPECT_EQ(parts_.loginItem.unregisterItem(), std::nullopt);
  EXPECT_EQ(parts_.loginItem.status(), LoginItemStatus::notRegistered);
}

TEST_P(DesktopContract, PostedWorkRunsLaterAndInItsOrder) {
  std::vector<int> ran;
  parts_.mainQueue.post([&] { ran.push_back(1); });
  parts_.mainQueue.post([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(eventually([&] { return ran.size() == 2; }));
  EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_P(DesktopContract, DelayedWorkRunsOnceAndAfterWhatIsDueEarlier) {
  std::vector<int> ran;
  parts_.mainQueue.postAfter(40ms, [&] { ran.push_back(2); });
  parts_.mainQueue.postAfter(0ms, [&] { ran.push_back(1); });
  EXPECT_TRUE(eventually([&] { return ran.size() == 2; }));
  EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_P(DesktopContract, RepeatedWorkRunsUntilItsSubscriptionEnds) {
  int ticks = 0;
  bool isLater = false;
  auto timer = parts_.mainQueue.repeat(10ms, [&] { ++ticks; });
  EXPECT_TRUE(eventually([&] { return ticks == 3; }));
  timer.reset();
  parts_.mainQueue.postAfter(60ms, [&] { isLater = true; });
  EXPECT_TRUE(eventually([&] { return isLater; }));
  EXPECT_EQ(ticks, 3);
}

TEST_P(DesktopContract, RepeatedWorkMayEndItsOwnSubscription) {
  int ticks = 0;
  bool isLater = false;
  Subscription timer;
  timer = parts_.mainQueue.repeat(10ms, [&] {
    ++ticks;
    timer.reset();
  });
  parts_.mainQueue.postAfter(60ms, [&] { isLater = true; });
  EXPECT_TRUE(eventually([&] { return isLater; }));
  EXPECT_EQ(ticks, 1);
}

INSTANTIATE_TEST_SUITE_P(Any, DesktopContract, testing::ValuesIn(desktopKinds()), [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace tilora::contract
