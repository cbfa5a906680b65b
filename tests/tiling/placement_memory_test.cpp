// The rules by which placements, the user's choices and pairs are kept.
#include "tiling/placement_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using test::screenNumbered;
using test::windowOn;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using enum WindowPlacement;

constexpr WindowKey a = {1, 1};
constexpr WindowKey b = {2, 2};
constexpr WindowKey c = {3, 3};

TEST(PlacementKey, JoinsApplicationAndWindow) { EXPECT_EQ(placementKey("com.example", "title:notes"), "com.example||title:notes"); }

TEST(PlacementMemory, AWindowWithoutAPlacementIsFull) { EXPECT_EQ(PlacementMemory().placementOf(a), full); }

TEST(PlacementMemory, ALaterPlacementReplacesAnEarlierOne) {
  PlacementMemory memory;
  memory.setPlacement(a, left);
  memory.setPlacement(a, right);

  EXPECT_THAT(memory.windowPlacements(), UnorderedElementsAre(Pair(a, right)));
}

TEST(PlacementMemory, PlacementsOfWindowsThatAreGoneAreForgotten) {
  PlacementMemory memory;
  memory.setPlacement(a, left);
  memory.setPlacement(b, right);

  memory.prunePlacements({b, c});

  EXPECT_THAT(memory.windowPlacements(), UnorderedElementsAre(Pair(b, right)));
}

/// The placement of one window titled "notes" of the application "app", which was `full` so far, after the preferences were applied.
WindowPlacement placementAfter(PlacementPreferences preferences, const std::string& identity = "title:notes") {
  PlacementMemory memory;
  memory.setPlacement(a, full);
  memory.setAppPlacementPreferences(std::move(preferences));
  memory.applyPlacementPreferences({windowOn(screenNumbered(1), a, "app", identity)});
  return memory.placementOf(a);
}

TEST(Preferences, TheChoiceForAKindOfWindowCounts) { EXPECT_EQ(placementAfter({{"app||title:notes", left}}), left); }

TEST(Preferences, AChoiceStoredWithoutTitlePrefixCounts) { EXPECT_EQ(placementAfter({{"app||notes", right}}), right); }

TEST(Preferences, AChoiceForTheWholeApplicationCounts) { EXPECT_EQ(placementAfter({{"app", floatCenter}}), floatCenter); }

TEST(Preferences, TheMostSpecificChoiceComesFirst) {
  EXPECT_EQ(placementAfter({{"app||title:notes", left}, {"app||notes", right}, {"app", floatCenter}}), left);
  EXPECT_EQ(placementAfter({{"app||notes", right}, {"app", floatCenter}}), right);
}

TEST(Preferences, OnlyTitlesHaveAFormWithoutPrefix) {
  EXPECT_EQ(placementAfter({{"app||notes", right}}, "role:notes"), full);
  EXPECT_EQ(placementAfter({{"app||notes", right}, {"app", left}}, "axid:notes"), left);
  EXPECT_EQ(placementAfter({{"app||", right}}, "title:"), right);
}

TEST(Preferences, OfOtherApplicationsAndWindowsDoNotCount) {
  EXPECT_EQ(placementAfter({{"other||title:notes", left}, {"app||title:other", left}, {"other", left}, {"app||", left}}), full);
}

TEST(Preferences, OfAnApplicationWithVeryManyEachIsFound) {
  PlacementPreferences preferences = {{"app", floatCenter}, {"app||older", right}, {"app2||title:page 1", full}};
  for (int page = 0; page < 1000; ++page) preferences.emplace("app||title:page " + std::to_string(page), page % 2 == 0 ? left : right);

  EXPECT_EQ(placementAfter(preferences, "title:page 0"), left);
  EXPECT_EQ(placementAfter(preferences, "title:page 999"), right);
  EXPECT_EQ(placementAfter(preferences, "title:older"), right);
  EXPECT_EQ(placementAfter(preferences, "title:page 1000"), floatCenter);
}

TEST(Preferences, AreForSomeKindOfWindowOrForTheWholeApplication) {
  PlacementMemory memory;
  EXPECT_FALSE(memory.hasChoicesByIdentity("app"));

  memory.setAppPlacementPreferences({{"app", left}, {"app2||title:notes", left}, {"application", left}, {"b||", right}});

  EXPECT_FALSE(memory.hasChoicesByIdentity("app"));
  EXPECT_TRUE(memory.hasChoicesByIdentity("app2"));
  EXPECT_TRUE(memory.hasChoicesByIdentity("b"));
  EXPECT_FALSE(memory.hasChoicesByIdentity("z"));
}

TEST(Preferences, WithoutOneThePlacementStays) {
  PlacementMemory memory;
  memory.setPlacement(a, right);
  memory.setAppPlacementPreferences({{"app||title:notes", left}});

  memory.applyPlacementPreferences(
      {windowOn(screenNumbered(1), a, "app", "title:other"), windowOn(screenNumbered(1), b, "app", "title:b")});

  EXPECT_THAT(memory.windowPlacements(), UnorderedElementsAre(Pair(a, right)));
}

TEST(Preferences, AWholeApplicationsChoiceReachesWindowsWithoutASpecificOne) {
  const auto screen = screenNumbered(1);
  PlacementMemory memory;
  memory.setPlacement(a, left);
  memory.setAppPlacementPreferences({{"app", full}, {"app||title:b", right}});

  memory.applyPlacementPreferences(
      {windowOn(screen, a, "app", "title:a"), windowOn(screen, b, "app", "title:b"), windowOn(screen, c, "other")});

  EXPECT_THAT(memory.windowPlacements(), UnorderedElementsAre(Pair(a, full), Pair(b, right)));
}

TEST(Preferences, AChoiceReplacesTheOneForTheWholeApplication) {
  PlacementMemory memory;
  memory.setAppPlacementPreferences({{"app", full}, {"app||title:notes", right}, {"other", full}});

  memory.rememberChoice("app", "title:notes", left);

  EXPECT_THAT(memory.appPlacementPreferences(), UnorderedElementsAre(Pair("app||title:notes", left), Pair("other", full)));
}

TEST(Pairs, AreReciprocal) {
  PlacementMemory memory;
  memory.pair(a, b);

  EXPECT_THAT(memory.windowPairings(), UnorderedElementsAre(Pair(a, b), Pair(b, a)));
}

TEST(Pairs, AWindowIsNeverItsOwnPartner) {
  PlacementMemory memory;
  memory.pair(a, b);
  memory.pair(a, a);

  EXPECT_THAT(memory.windowPairings(), UnorderedElementsAre(Pair(a, b), Pair(b, a)));
}

TEST(Pairs, AFormerPartnerIsLeftAlone) {
  PlacementMemory memory;
  memory.pair(a, b);
  memory.pair(a, c);

  EXPECT_THAT(memory.windowPairings(), UnorderedElementsAre(Pair(a, c), Pair(c, a)));
}

TEST(Pairs, TwoPairsThatMixLeaveOne) {
  constexpr WindowKey d = {4, 4};
  PlacementMemory memory;
  memory.pair(a, b);
  memory.pair(c, d);
  memory.pair(b, c);

  EXPECT_THAT(memory.windowPairings(), UnorderedElementsAre(Pair(b, c), Pair(c, b)));
}

TEST(Pairs, EitherWindowTakesBothApart) {
  for (const auto& key : {a, b}) {
    PlacementMemory memory;
    memory.pair(a, b);
    memory.unpair(key);
    EXPECT_THAT(memory.windowPairings(), IsEmpty());
  }
}

TEST(Pairs, AWindowWithoutAPartnerIsTakenApartSilently) {
  PlacementMemory memory;
  memory.pair(a, b);
  memory.unpair(c);

  EXPECT_EQ(memory.windowPairings().size(), 2);
}

TEST(Pairs, OfWindowsThatAreGoneAreDropped) {
  PlacementMemory memory;
  memory.pair(a, b);

  memory.prunePairings({a, b});
  EXPECT_EQ(memory.windowPairings().size(), 2);
  memory.prunePairings({a, c});
  EXPECT_THAT(memory.windowPairings(), IsEmpty());
}

TEST(Pairs, ThatDoNotLeadBackAreNoPairs) {
  const WindowKeySet live = {a, b, c};

  EXPECT_THAT(reciprocalPairings({{a, b}}, live), IsEmpty());
  EXPECT_THAT(reciprocalPairings({{a, b}, {b, c}, {c, b}}, live), UnorderedElementsAre(Pair(b, c), Pair(c, b)));
  EXPECT_THAT(reciprocalPairings({{a, a}}, live), IsEmpty());
}

TEST(Pairs, OfWindowsThatAreNoHalvesAreDropped) {
  for (const auto placement : {full, floatCenter}) {
    PlacementMemory memory;
    memory.setPlacement(a, left);
    memory.setPlacement(b, placement);
    memory.pair(a, b);
    memory.dropUnplacedPairings({a, b});
    EXPECT_THAT(memory.windowPairings(), IsEmpty()) << text(placement);
  }
}

TEST(Pairs, OfAWindowWithoutAPlacementAreDropped) {
  PlacementMemory memory;
  memory.setPlacement(a, left);
  memory.pair(a, b);

  memory.dropUnplacedPairings({a, b});

  EXPECT_THAT(memory.windowPairings(), IsEmpty());
}

TEST(Pairs, OfTwoHalvesStay) {
  PlacementMemory memory;
  memory.setPlacement(a, left);
  memory.setPlacement(b, right);
  memory.pair(a, b);

  memory.dropUnplacedPairings({a, b, c});

  EXPECT_EQ(memory.windowPairings().size(), 2);
}

}  // namespace
}  // namespace tilora
