// Key-downs reach the monitors in order, also while monitors come and go.
#include "platform/x11/key_monitor.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tilora::x11 {
namespace {

constexpr KeyEvent event{.keyCode = 33, .flags = 1U << 19U};

TEST(KeyMonitor, WithoutAMonitorNothingIsSwallowed) {
  X11KeyMonitor monitor;
  EXPECT_FALSE(monitor.isInstalled());
  EXPECT_FALSE(monitor.deliver(event));
}

TEST(KeyMonitor, AMonitorSeesTheKeyAndItsAnswerIsTheAnswer) {
  for (const bool swallows : {false, true}) {
    X11KeyMonitor monitor;
    std::optional<KeyEvent> seen;
    const auto installed = monitor.install([&](const KeyEvent& key) {
      seen = key;
      return swallows;
    });
    EXPECT_TRUE(monitor.isInstalled());
    EXPECT_EQ(monitor.deliver(event), swallows);
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->keyCode, event.keyCode);
    EXPECT_EQ(seen->flags, event.flags);
  }
}

TEST(KeyMonitor, CombinationsGoToAMonitorOnlyWhileTheProgramHasTheKeyboard) {
  bool hasKeyboard = true;
  X11KeyMonitor monitor([&] { return hasKeyboard; });
  EXPECT_FALSE(monitor.takesCombinations());
  const auto installed = monitor.install([](const KeyEvent&) { return true; });
  EXPECT_TRUE(monitor.takesCombinations());
  hasKeyboard = false;
  EXPECT_FALSE(monitor.takesCombinations());
  EXPECT_TRUE(monitor.isInstalled());
}

TEST(KeyMonitor, TheLastInstalledIsAskedFirstAndOneThatSwallowsIsTheLast) {
  X11KeyMonitor monitor;
  std::string order;
  const auto add = [&](char name, bool swallows) {
    return monitor.install([&order, name, swallows](const KeyEvent&) {
      order += name;
      return swallows;
    });
  };
  const auto a = add('a', false);
  const auto b = add('b', true);
  const auto c = add('c', false);
  EXPECT_TRUE(monitor.deliver(event));
  EXPECT_EQ(order, "cb");
}

TEST(KeyMonitor, AMonitorThatWasTakenAwayIsNotAsked) {
  X11KeyMonitor monitor;
  int asked = 0;
  auto installed = monitor.install([&](const KeyEvent&) { return ++asked > 0; });
  installed.reset();
  EXPECT_FALSE(monitor.isInstalled());
  EXPECT_FALSE(monitor.deliver(event));
  EXPECT_EQ(asked, 0);
}

TEST(KeyMonitor, AMonitorMayTakeItselfAndOthersAwayWhileItIsAsked) {
  X11KeyMonitor monitor;
  int asked = 0;
  std::optional<Subscription> first;
  std::optional<Subscription> second;
  first = monitor.install([&](const KeyEvent&) { return ++asked > 0; });
  second = monitor.install([&](const KeyEvent&) {
    first.reset();
    second.reset();
    return false;
  });
  EXPECT_FALSE(monitor.deliver(event));
  EXPECT_EQ(asked, 0);
  EXPECT_FALSE(monitor.isInstalled());
}

TEST(KeyMonitor, NothingToAskIsNotInstalled) {
  X11KeyMonitor monitor;
  EXPECT_FALSE(monitor.install(nullptr));
  EXPECT_FALSE(monitor.isInstalled());
}

}  // namespace
}  // namespace tilora::x11
