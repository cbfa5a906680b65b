// What is read from the settings store, whatever it holds, and what is written to it.
#include "controller/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "controller/session.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using test::placementPreferencesKey;
using test::Session;
using test::shortcutBindingsKey;
using test::startOnLoginKey;
using test::stored;
using test::windowPaddingKey;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr auto nan = std::numeric_limits<double>::quiet_NaN();

struct PaddingCase {
  std::string name;
  std::optional<SettingValue> value;
  double padding;
};

class StoredPadding : public testing::TestWithParam<PaddingCase> {};

TEST_P(StoredPadding, IsReadAsANumberThatIsNotNegative) {
  const auto desktop = test::laptop().build();
  desktop->settings().put(windowPaddingKey, GetParam().value);

  EXPECT_EQ(loadWindowPadding(desktop->settings()), GetParam().padding);
}

INSTANTIATE_TEST_SUITE_P(Values, StoredPadding,
                         testing::Values(PaddingCase{"Nothing", std::nullopt, 12}, PaddingCase{"Zero", 0.0, 0},
                                         PaddingCase{"Eight", 8.0, 8}, PaddingCase{"Fraction", 12.6, 12.6},
                                         PaddingCase{"Negative", -3.0, 0}, PaddingCase{"NotANumber", nan, 0},
                                         PaddingCase{"Large", 1e6, 1e6}, PaddingCase{"Truth", true, 1},
                                         PaddingCase{"NumberInWords", "16.5 px", 16.5}, PaddingCase{"Words", "wide", 0},
                                         PaddingCase{"NegativeInWords", "-4", 0}, PaddingCase{"Data", SettingData{"8"}, 0}),
                         test::caseName);

struct LoginCase {
  std::string name;
  std::optional<SettingValue> value;
  LoginItemStatus status;
  bool isEnabled;
};

class StoredStartOnLogin : public testing::TestWithParam<LoginCase> {};

TEST_P(StoredStartOnLogin, CountsBeforeTheSystemsStatus) {
  const auto desktop = test::withLoginItem({.status = GetParam().status});
  desktop->settings().put(startOnLoginKey, GetParam().value);

  EXPECT_EQ(loadStartOnLoginEnabled(desktop->settings(), desktop->loginItem()), GetParam().isEnabled);
}

using enum LoginItemStatus;

INSTANTIATE_TEST_SUITE_P(Values, StoredStartOnLogin,
                         testing::Values(LoginCase{"FalseThoughEnabled", false, enabled, false},
                                         LoginCase{"TrueThoughNotRegistered", true, notRegistered, true},
                                         LoginCase{"NothingNotRegistered", std::nullopt, notRegistered, false},
                                         LoginCase{"NothingEnabled", std::nullopt, enabled, true},
                                         LoginCase{"NothingRequiresApproval", std::nullopt, requiresApproval, true},
                                         LoginCase{"NothingNotFound", std::nullopt, notFound, false},
                                         LoginCase{"Number", 1.0, notRegistered, true}, LoginCase{"Zero", 0.0, enabled, false},
                                         LoginCase{"Words", "YES", notRegistered, true},
                                         LoginCase{"Data", SettingData{"true"}, enabled, false}),
                         test::caseName);

ShortcutBindings bindingsFrom(const std::optional<SettingValue>& value) {
  const auto desktop = test::laptop().build();
  desktop->settings().put(shortcutBindingsKey, value);
  return loadShortcutBindings(desktop->settings());
}

const std::string threeBindings =
    R"({"moveLeft":{"keyCode":1,"modifiers":256},"moveRight":{"keyCode":2,"modifiers":256},"centerOrFullscreen":{"keyCode":3,"modifiers":256}})";

TEST(StoredShortcutBindings, AreReadFromData) {
  const ShortcutBindings expected = {{1, 256}, {2, 256}, {3, 256}, ShortcutBindings{}.floatCenter};

  EXPECT_EQ(bindingsFrom(SettingData{threeBindings}), expected);
}

TEST(StoredShortcutBindings, AreTheDefaultsWhenTheyCannotBeRead) {
  EXPECT_EQ(bindingsFrom(std::nullopt), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(SettingData{""}), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(SettingData{"{}"}), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(SettingData{"\xFF\xFE"}), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(SettingData{threeBindings + "x"}), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(threeBindings), ShortcutBindings{});
  EXPECT_EQ(bindingsFrom(true), ShortcutBindings{});
}

TEST(StoredShortcutBindings, ThatCannotBeReadStayAsTheyAreAtStart) {
  Session session(test::laptop().setting(shortcutBindingsKey, SettingData{"{broken"}));
  session.advance(1000ms);

  EXPECT_EQ(session.controller().shortcutBindings(), ShortcutBindings{});
  EXPECT_EQ(*session.desktop().settings().find(shortcutBindingsKey), SettingValue(SettingData{"{broken"}));
}

TEST(StoredShortcutBindings, AreWrittenAsData) {
  const auto desktop = test::laptop().build();
  const ShortcutBindings bindings = {{1, 256}, {2, 512}, {3, 2048}, {4, 4096}};

  saveShortcutBindings(desktop->settings(), bindings);

  EXPECT_TRUE(std::holds_alternative<SettingData>(*desktop->settings().find(shortcutBindingsKey)));
  EXPECT_EQ(loadShortcutBindings(desktop->settings()), bindings);
}

PlacementPreferences preferencesFrom(const std::optional<SettingValue>& value) {
  const auto desktop = test::laptop().build();
  desktop->settings().put(placementPreferencesKey, value);
  return loadAppPlacementPreferences(desktop->settings());
}

TEST(StoredPlacementPreferences, AreReadFromData) {
  EXPECT_THAT(preferencesFrom(SettingData{R"({"app||title:notes":"left","other":"floatCenter"})"}),
              UnorderedElementsAre(Pair("app||title:notes", WindowPlacement::left), Pair("other", WindowPlacement::floatCenter)));
}

TEST(StoredPlacementPreferences, AreNoneWhenTheyCannotBeRead) {
  EXPECT_THAT(preferencesFrom(std::nullopt), IsEmpty());
  EXPECT_THAT(preferencesFrom(SettingData{R"({"app":"top"})"}), IsEmpty());
  EXPECT_THAT(preferencesFrom(SettingData{R"({"app":"left","other":"top"})"}), IsEmpty());
  EXPECT_THAT(preferencesFrom(SettingData{"\xFF"}), IsEmpty());
  EXPECT_THAT(preferencesFrom(R"({"app":"left"})"), IsEmpty());
}

TEST(StoredPlacementPreferences, AreWrittenAsDataWhateverBytesATitleHolds) {
  const auto desktop = test::laptop().build();

  saveAppPlacementPreferences(desktop->settings(), {{"app||title:\xC0\xFF", WindowPlacement::left}});

  EXPECT_THAT(desktop->takeEffects(), ElementsAre(test::storedPreferences("{\"app||title:\uFFFD\uFFFD\":\"left\"}")));
  EXPECT_EQ(loadAppPlacementPreferences(desktop->settings()).size(), 1);
}

TEST(StoredValues, AreWrittenUnderTheirKeys) {
  const auto desktop = test::laptop().build();

  saveWindowPadding(desktop->settings(), 8.5);
  saveStartOnLoginEnabled(desktop->settings(), true);

  EXPECT_THAT(desktop->takeEffects(), ElementsAre(stored(windowPaddingKey, 8.5), stored(startOnLoginKey, true)));
}

}  // namespace
}  // namespace tilora
