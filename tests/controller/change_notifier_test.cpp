// Who is told that a published value is about to change.
#include "controller/change_notifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tilora {
namespace {

using testing::ElementsAre;
using enum PublishedProperty;

TEST(ChangeNotifier, TellsItsObserversInOrder) {
  std::vector<std::string> told;
  ChangeNotifier notifier;
  const auto first = notifier.observe([&](PublishedProperty property) { told.push_back("first " + std::string(text(property))); });
  const auto second = notifier.observe([&](PublishedProperty property) { told.push_back("second " + std::string(text(property))); });

  notifier.willChange(windowPadding);
  notifier.willChange(startOnLoginError);

  EXPECT_THAT(told, ElementsAre("first windowPadding", "second windowPadding", "first startOnLoginError", "second startOnLoginError"));
}

TEST(ChangeNotifier, NamesItsProperties) {
  EXPECT_EQ(text(startOnLoginEnabled), "startOnLoginEnabled");
  EXPECT_EQ(text(isAccessibilityTrusted), "isAccessibilityTrusted");
  EXPECT_EQ(text(shortcutBindings), "shortcutBindings");
}

TEST(ChangeNotifier, AnObserverThatLeftIsNotTold) {
  int told = 0;
  ChangeNotifier notifier;
  auto observer = notifier.observe([&](PublishedProperty) { ++told; });

  observer.reset();
  notifier.willChange(windowPadding);

  EXPECT_EQ(told, 0);
}

TEST(ChangeNotifier, AnObserverMayLeaveWhileItIsTold) {
  int told = 0;
  ChangeNotifier notifier;
  Subscription observer;
  observer = notifier.observe([&](PublishedProperty) {
    ++told;
    observer.reset();
  });

  notifier.willChange(windowPadding);
  notifier.willChange(windowPadding);

  EXPECT_EQ(told, 1);
}

TEST(ChangeNotifier, ASubscriptionMayOutliveIt) {
  Subscription observer;
  {
    ChangeNotifier notifier;
    observer = notifier.observe([](PublishedProperty) {});
  }

  observer.reset();

  EXPECT_FALSE(static_cast<bool>(observer));
}

}  // namespace
}  // namespace tilora
