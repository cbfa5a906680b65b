// The user's choices are found by application and kind of window, whatever these are called.
#include "tiling/stored_choices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace tilora {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;
using enum WindowPlacement;

TEST(StoredChoices, AreKeptAsTheyWereStored) {
  const PlacementPreferences preferences = {{"app", left}, {"app||title:notes", right}, {"||", full}, {"", floatCenter}};

  EXPECT_EQ(StoredChoices(preferences).all(), preferences);
}

TEST(StoredChoices, ALaterChoiceReplacesAnEarlierOne) {
  StoredChoices choices;
  choices.remember("app", "title:notes", left);
  choices.remember("app", "title:notes", right);

  EXPECT_THAT(choices.all(), UnorderedElementsAre(Pair("app||title:notes", right)));
  EXPECT_EQ(choices.of("app").placementFor("title:notes"), right);
}

TEST(StoredChoices, AChoiceForAKindOfWindowEndsTheOneForTheWholeApplication) {
  StoredChoices choices({{"app", full}, {"other", left}});
  choices.remember("app", "title:notes", right);

  EXPECT_EQ(choices.of("app").placementFor("title:notes"), right);
  EXPECT_EQ(choices.of("app").placementFor("title:mail"), std::nullopt);
  EXPECT_EQ(choices.of("other").placementFor("title:notes"), left);
}

TEST(StoredChoices, AnApplicationCalledLikeTheKeyOfAnotherEndsThatChoice) {
  StoredChoices choices({{"app||title:notes", left}});
  choices.remember("app||title:notes", "title:mail", right);

  EXPECT_EQ(choices.of("app").placementFor("title:notes"), std::nullopt);
  EXPECT_EQ(choices.of("app||title:notes").placementFor("title:mail"), right);
}

TEST(StoredChoices, MovedTheyAreFoundAsBefore) {
  StoredChoices choices({{"app||title:notes", left}});
  choices = StoredChoices(StoredChoices({{"app||title:mail", right}}));

  EXPECT_EQ(choices.of("app").placementFor("title:mail"), right);
  EXPECT_EQ(choices.of("app").placementFor("title:notes"), std::nullopt);
}

/// What the three stored forms say of a window, looked up one after the other.
std::optional<WindowPlacement> lookedUp(const PlacementPreferences& all, const std::string& application, const std::string& identity) {
  std::vector<std::string> keys = {application + "||" + identity};
  if (identity.starts_with("title:")) keys.push_back(application + "||" + identity.substr(6));
  keys.push_back(application);
  for (const auto& key : keys) {
    if (const auto found = all.find(key); found != all.end()) return found->second;
  }
  return std::nullopt;
}

TEST(StoredChoices, OfApplicationsAndWindowsWithSeparatorsInTheirNamesAreFoundToo) {
  const std::vector<std::string> applications = {"", "a", "b", "|", "a|", "|a", "||", "a||b", "a||b|", "a|||b", "b||"};
  const std::vector<std::string> identities = {"title:",    "title:a",          "title:|", "title:||", "title:a||b", "axid:|a",
                                               "role:a||b", "title:b||title:a", "axid:a",  "title:|b", "axid:||"};
  std::mt19937 random(1);
  const auto oneOf = [&](const auto& texts) { return texts[random() % texts.size()]; };
  for (int round = 0; round < 200; ++round) {
    StoredChoices choices;
    PlacementPreferences expected;
    for (int i = 0; i < 6; ++i) {
      const auto application = oneOf(applications);
      const auto identity = oneOf(identities);
      const auto placement = static_cast<WindowPlacement>(random() % 4);
      choices.remember(application, identity, placement);
      expected.erase(application);
      expected.insert_or_assign(placementKey(application, identity), placement);
    }
    if (round % 2 == 1) {
      expected.emplace(oneOf(applications), left);
      expected.emplace(oneOf(applications) + "||" + oneOf(applications), right);
      choices = StoredChoices(expected);
    }
    EXPECT_EQ(choices.all(), expected);
    for (const auto& application : applications) {
      const auto found = choices.of(application);
      for (const auto& identity : identities) {
        EXPECT_EQ(found.placementFor(identity), lookedUp(expected, application, identity)) << application << " and " << identity;
      }
      EXPECT_EQ(found.haveIdentities(),
                std::ranges::any_of(expected, [&](const auto& entry) { return entry.first.starts_with(application + "||"); }))
          << application;
    }
  }
}

}  // namespace
}  // namespace tilora
