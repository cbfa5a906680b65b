// Keeping the start-on-login toggle in step with what the system holds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controller/session.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using simulated::LoginItemRegistered;
using simulated::LoginItemTraits;
using simulated::LoginItemUnregistered;
using simulated::UrlOpened;
using test::Session;
using test::startOnLoginKey;
using test::stored;
using test::withLoginItem;
using testing::ElementsAre;
using testing::IsEmpty;
using enum LoginItemStatus;
using enum PublishedProperty;

constexpr const char* approvalMessage = "macOS requires approval in System Settings > General > Login Items.";
constexpr const char* moveMessage = "Could not update Login Items. Move Tilora.app to /Applications, relaunch, and try again.";

struct StatusCase {
  std::string name;
  LoginItemStatus status;
  bool isOn;
  std::optional<std::string> error;
};

class LoginStatus : public testing::TestWithParam<StatusCase> {};

TEST_P(LoginStatus, IsMirroredAtStartWhateverIsStored) {
  for (const auto& storedValue : {std::optional<SettingValue>(), std::optional<SettingValue>(true), std::optional<SettingValue>(false)}) {
    auto desktop = withLoginItem({.status = GetParam().status});
    desktop->settings().put(startOnLoginKey, storedValue);
    Session session(std::move(desktop));

    EXPECT_EQ(session.controller().startOnLoginEnabled(), GetParam().isOn);
    EXPECT_EQ(session.controller().startOnLoginError(), GetParam().error);
    EXPECT_THAT(session.effects(), testing::Each(testing::VariantWith<simulated::HotKeyRegistered>(testing::_)));
  }
}

TEST_P(LoginStatus, IsMirroredWhenAskedAnew) {
  Session session(test::laptop());
  session.desktop().loginItem().traits.status = GetParam().status;

  const auto effects = session.effectsOf([&] { session.controller().refreshStartOnLoginStatus(); });

  EXPECT_THAT(effects, IsEmpty());
  EXPECT_EQ(session.controller().startOnLoginEnabled(), GetParam().isOn);
  EXPECT_EQ(session.controller().startOnLoginError(), GetParam().error);
  EXPECT_THAT(session.changes(), ElementsAre(startOnLoginEnabled, startOnLoginError));
}

INSTANTIATE_TEST_SUITE_P(All, LoginStatus,
                         testing::Values(StatusCase{"NotRegistered", notRegistered, false, std::nullopt},
                                         StatusCase{"Enabled", enabled, true, std::nullopt},
                                         StatusCase{"RequiresApproval", requiresApproval, true, approvalMessage},
                                         StatusCase{"NotFound", notFound, false, std::nullopt}),
                         test::caseName);

/// The user turns the toggle on or off, and what comes of it at once.
struct ToggleCase {
  std::string name;
  LoginItemTraits service;
  bool wanted;
  std::vector<simulated::Effect> effects;
  bool isOn;
  std::optional<std::string> error;
};

class LoginToggle : public testing::TestWithParam<ToggleCase> {};

TEST_P(LoginToggle, MakesTheSystemMatchOrSnapsBack) {
  const auto& toggle = GetParam();
  Session session(withLoginItem({.status = toggle.wanted ? notRegistered : enabled}));
  session.desktop().loginItem().traits = toggle.service;

  const auto effects = session.effectsOf([&] { session.controller().setStartOnLoginEnabled(toggle.wanted); });

  EXPECT_THAT(effects, testing::ElementsAreArray(toggle.effects));
  EXPECT_EQ(session.controller().startOnLoginEnabled(), toggle.isOn);
  EXPECT_EQ(session.controller().startOnLoginError(), toggle.error);
}

const auto storedOn = stored(startOnLoginKey, true);
const auto storedOff = stored(startOnLoginKey, false);

INSTANTIATE_TEST_SUITE_P(
    Cases, LoginToggle,
    testing::Values(ToggleCase{"On", {.status = notRegistered}, true, {storedOn, LoginItemRegistered{true}}, true, std::nullopt},
                    ToggleCase{"OnFromNotFound", {.status = notFound}, true, {storedOn, LoginItemRegistered{true}}, true, std::nullopt},
                    ToggleCase{"OnWhenEnabledAlready", {.status = enabled}, true, {storedOn}, true, std::nullopt},
                    ToggleCase{"OnWhileApprovalIsAwaited", {.status = requiresApproval}, true, {storedOn}, true, approvalMessage},
                    ToggleCase{"OnThatNeedsApproval",
                               {.status = notRegistered, .statusAfterRegister = requiresApproval},
                               true,
                               {storedOn, LoginItemRegistered{true}},
                               true,
                               approvalMessage},
                    ToggleCase{"OnThatIsNotFound",
                               {.status = notRegistered, .statusAfterRegister = notFound},
                               true,
                               {storedOn, LoginItemRegistered{true}},
                               false,
                               moveMessage},
                    ToggleCase{"OnThatFails",
                               {.status = notRegistered, .registerError = "The disk is full."},
                               true,
                               {storedOn, LoginItemRegistered{false}},
                               false,
                               "Could not update Login Items: The disk is full."},
                    ToggleCase{"OnThatFailsWithoutWords",
                               {.status = notRegistered, .registerError = ""},
                               true,
                               {storedOn, LoginItemRegistered{false}},
                               false,
                               "Could not update Login Items: "},
                    ToggleCase{"OnThatIsNotPermitted",
                               {.status = notRegistered, .registerError = "Operation not permitted"},
                               true,
                               {storedOn, LoginItemRegistered{false}},
                               false,
                               moveMessage},
                    ToggleCase{"OnThatIsNotPermittedInCapitals",
                               {.status = notFound, .registerError = "ERROR 1: OPERATION NOT PERMITTED."},
                               true,
                               {storedOn, LoginItemRegistered{false}},
                               false,
                               moveMessage},
                    ToggleCase{"Off", {.status = enabled}, false, {storedOff, LoginItemUnregistered{true}}, false, std::nullopt},
                    ToggleCase{"OffWhileApprovalIsAwaited",
                               {.status = requiresApproval},
                               false,
                               {storedOff, LoginItemUnregistered{true}},
                               false,
                               std::nullopt},
                    ToggleCase{"OffWhenNotRegistered", {.status = notRegistered}, false, {storedOff}, false, std::nullopt},
                    ToggleCase{"OffWhenNotFound", {.status = notFound}, false, {storedOff}, false, std::nullopt},
                    ToggleCase{"OffThatFails",
                               {.status = enabled, .unregisterError = "Busy."},
                               false,
                               {storedOff, LoginItemUnregistered{false}},
                               true,
                               "Could not update Login Items: Busy."},
                    ToggleCase{"OffThatIsNotPermitted",
                               {.status = requiresApproval, .unregisterError = "operation not permitted"},
                               false,
                               {storedOff, LoginItemUnregistered{false}},
                               true,
                               moveMessage},
                    ToggleCase{"OffThatAwaitsApprovalAfterwards",
                               {.status = enabled, .statusAfterUnregister = requiresApproval},
                               false,
                               {storedOff, LoginItemUnregistered{true}},
                               false,
                               approvalMessage}),
    test::caseName);

TEST(StartOnLogin, TurningOffClearsAMessage) {
  Session session(withLoginItem({.status = requiresApproval}));
  EXPECT_EQ(session.controller().startOnLoginError(), approvalMessage);
  session.desktop().loginItem().traits.status = notRegistered;

  session.controller().setStartOnLoginEnabled(false);

  EXPECT_EQ(session.controller().startOnLoginError(), std::nullopt);
}

TEST(StartOnLogin, TheSameValueDoesNothingButTellObservers) {
  Session session(withLoginItem({.status = enabled}));

  EXPECT_THAT(session.effectsOf([&] { session.controller().setStartOnLoginEnabled(true); }), IsEmpty());
  EXPECT_THAT(session.changes(), ElementsAre(startOnLoginEnabled));
}

TEST(StartOnLogin, LoadingAStoredTrueRegistersNothing) {
  Session session(test::laptop().setting(startOnLoginKey, true));
  session.advance(5000ms);

  EXPECT_FALSE(session.controller().startOnLoginEnabled());
  EXPECT_EQ(session.desktop().loginItem().status(), notRegistered);
}

TEST(StartOnLogin, TheStatusIsReadAgainWhenItHasSettled) {
  Session session(test::laptop().untrusted());
  session.controller().setStartOnLoginEnabled(true);
  session.desktop().loginItem().traits.status = requiresApproval;

  session.advance(799ms);
  EXPECT_EQ(session.controller().startOnLoginError(), std::nullopt);
  session.advance(1ms);
  EXPECT_EQ(session.controller().startOnLoginError(), approvalMessage);
  EXPECT_TRUE(session.controller().startOnLoginEnabled());
}

TEST(StartOnLogin, AFailureIsNotFollowedByAnotherRead) {
  Session session(test::laptop().untrusted());
  session.desktop().loginItem().traits.registerError = "The disk is full.";
  session.controller().setStartOnLoginEnabled(true);
  session.desktop().loginItem().traits.status = requiresApproval;

  session.advance(2000ms);

  EXPECT_EQ(session.controller().startOnLoginError(), "Could not update Login Items: The disk is full.");
}

TEST(StartOnLogin, ARegistrationThatIsNotFoundIsNotFollowedByAnotherRead) {
  Session session(test::laptop().untrusted());
  session.desktop().loginItem().traits.statusAfterRegister = notFound;
  session.controller().setStartOnLoginEnabled(true);
  session.desktop().loginItem().traits.status = enabled;

  session.advance(2000ms);

  EXPECT_FALSE(session.controller().startOnLoginEnabled());
  EXPECT_EQ(session.controller().startOnLoginError(), moveMessage);
}

TEST(StartOnLogin, ARevertIsNotStored) {
  Session session(test::laptop());
  session.desktop().loginItem().traits.registerError = "The disk is full.";

  session.controller().setStartOnLoginEnabled(true);

  EXPECT_FALSE(session.controller().startOnLoginEnabled());
  EXPECT_EQ(*session.desktop().settings().find(startOnLoginKey), SettingValue(true));
}

TEST(StartOnLogin, TheSystemsLoginItemsAreOpened) {
  Session session(test::laptop());

  EXPECT_THAT(session.effectsOf([&] { session.controller().openLoginItemsSettings(); }),
              ElementsAre(UrlOpened{"x-apple.systempreferences:com.apple.LoginItems-Settings.extension"}));
}

}  // namespace
}  // namespace tilora
