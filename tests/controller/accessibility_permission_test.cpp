// Following whether the process is trusted, asking for it, and opening the settings that grant it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controller/session.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using simulated::SelfActivated;
using simulated::TrustRequested;
using simulated::UrlOpened;
using test::Session;
using testing::ElementsAre;
using testing::IsEmpty;
using enum PublishedProperty;

/// A session past its first questions, with one window that each pass writes.
class Permission : public testing::Test {
 protected:
  Permission() : session_(test::tiledLaptop().app(100).window(1).front(100, 1).untrusted()) {
    session_.advance(1010ms);
    session_.effects();
    session_.changes();
  }

  void setTrusted(bool trusted) { session_.desktop().trust().trusted = trusted; }

  Session session_;
};

TEST_F(Permission, AnUnchangedAnswerIsNotPublished) {
  EXPECT_FALSE(session_.controller().refreshAccessibilityTrust());
  session_.advance(1000ms);

  EXPECT_THAT(session_.changes(), IsEmpty());
}

TEST_F(Permission, AGrantTakesEffectWithTheNextTick) {
  setTrusted(true);
  session_.advance(239ms);
  EXPECT_THAT(session_.effects(), IsEmpty());

  session_.advance(1ms);

  EXPECT_TRUE(session_.controller().isAccessibilityTrusted());
  EXPECT_THAT(session_.changes(), ElementsAre(isAccessibilityTrusted));
  EXPECT_THAT(session_.effects(), testing::SizeIs(2));
}

TEST_F(Permission, ARevokedGrantStopsAllPasses) {
  setTrusted(true);
  session_.advance(250ms);
  session_.effects();
  session_.changes();

  setTrusted(false);
  session_.advance(1000ms);

  EXPECT_FALSE(session_.controller().isAccessibilityTrusted());
  EXPECT_THAT(session_.changes(), ElementsAre(isAccessibilityTrusted));
  EXPECT_THAT(session_.effects(), IsEmpty());
}

TEST_F(Permission, ItsValueChangesAfterTheObserversAreTold) {
  bool toldValue = true;
  const auto observer =
      session_.controller().observeWillChange([&](PublishedProperty) { toldValue = session_.controller().isAccessibilityTrusted(); });
  setTrusted(true);

  EXPECT_TRUE(session_.controller().refreshAccessibilityTrust());
  EXPECT_FALSE(toldValue);
}

TEST_F(Permission, AskingBringsTheProgramToTheFrontFirst) {
  session_.controller().requestAccessibilityPermission(true);

  EXPECT_THAT(session_.effects(), ElementsAre(SelfActivated{}, TrustRequested{true}));
  EXPECT_FALSE(session_.controller().pendingRetile());
  EXPECT_THAT(session_.changes(), IsEmpty());
}

TEST_F(Permission, AskingWithoutThePromptLeavesTheFrontAlone) {
  session_.controller().requestAccessibilityPermission(false);

  EXPECT_THAT(session_.effects(), ElementsAre(TrustRequested{false}));
}

TEST_F(Permission, AskingWhenTrustedPublishesItAndSchedulesOnePass) {
  setTrusted(true);
  session_.controller().requestAccessibilityPermission(true);
  session_.controller().requestAccessibilityPermission(true);
  session_.effects();

  EXPECT_THAT(session_.changes(), ElementsAre(isAccessibilityTrusted));
  EXPECT_TRUE(session_.controller().pendingRetile());
  session_.advance(200ms);
  EXPECT_THAT(session_.effects(), testing::SizeIs(2));
  EXPECT_FALSE(session_.controller().pendingRetile());
}

TEST_F(Permission, TheSettingsThatGrantItAreOpened) {
  session_.controller().openAccessibilitySettings();

  EXPECT_THAT(session_.effects(), ElementsAre(UrlOpened{"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"}));
}

}  // namespace
}  // namespace tilora
