// Which windows each screen shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"
#include "tiling/placement_memory.h"

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
constexpr WindowKey d = {4, 4};

/// Windows on one screen, in the order of their keys.
class VisibleSet : public testing::Test {
 protected:
  WindowKeySet shownWith(WindowKey anchor) { return memory_.visibleSetFor(anchor, {&windows_[0], &windows_[1], &windows_[2]}); }

  std::vector<ManagedWindow> windows_ = {windowOn(screenNumbered(1), a), windowOn(screenNumbered(1), b), windowOn(screenNumbered(1), c)};
  PlacementMemory memory_;
};

TEST_F(VisibleSet, IsEverythingWhenTheAnchorIsElsewhere) {
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, right);

  EXPECT_THAT(shownWith(d), UnorderedElementsAre(a, b, c));
  EXPECT_THAT(memory_.windowPairings(), IsEmpty());
}

TEST_F(VisibleSet, OfAnAnchorWithoutAHalfIsTheAnchorAlone) {
  EXPECT_THAT(shownWith(b), UnorderedElementsAre(b));
  for (const auto placement : {full, floatCenter}) {
    memory_.setPlacement(b, placement);
    EXPECT_THAT(shownWith(b), UnorderedElementsAre(b)) << text(placement);
  }
}

TEST_F(VisibleSet, AnAnchorWithoutAHalfLosesItsPartner) {
  memory_.pair(a, b);
  memory_.setPlacement(b, right);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a));
  EXPECT_THAT(memory_.windowPairings(), IsEmpty());
}

TEST_F(VisibleSet, AHalfTakesTheFirstWindowOfTheOtherHalf) {
  memory_.setPlacement(a, right);
  memory_.setPlacement(b, right);
  memory_.setPlacement(c, left);

  EXPECT_THAT(shownWith(c), UnorderedElementsAre(c, a));
  EXPECT_THAT(memory_.windowPairings(), UnorderedElementsAre(Pair(a, c), Pair(c, a)));
}

TEST_F(VisibleSet, APairStandsAsItIs) {
  memory_.setPlacement(a, right);
  memory_.setPlacement(b, right);
  memory_.setPlacement(c, left);
  memory_.pair(c, b);

  EXPECT_THAT(shownWith(c), UnorderedElementsAre(c, b));
  EXPECT_THAT(shownWith(b), UnorderedElementsAre(c, b));
}

TEST_F(VisibleSet, APartnerOfTheSameHalfIsReplaced) {
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, left);
  memory_.setPlacement(c, right);
  memory_.pair(a, b);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a, c));
  EXPECT_THAT(memory_.windowPairings(), UnorderedElementsAre(Pair(a, c), Pair(c, a)));
}

TEST_F(VisibleSet, AHalfWithoutASuitablePartnerStandsAlone) {
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, left);
  memory_.setPlacement(c, floatCenter);
  memory_.pair(a, b);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a));
  EXPECT_THAT(memory_.windowPairings(), IsEmpty());
}

TEST_F(VisibleSet, AWindowWithoutAPlacementIsNoPartner) {
  memory_.setPlacement(a, left);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a));
}

TEST_F(VisibleSet, APartnerOnAnotherScreenIsReplaced) {
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, right);
  memory_.setPlacement(d, right);
  memory_.pair(a, d);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a, b));
}

TEST_F(VisibleSet, AWindowOnTheVerySameScreenIsPreferred) {
  windows_[2].screen = windows_[0].screen;
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, right);
  memory_.setPlacement(c, right);

  EXPECT_THAT(shownWith(a), UnorderedElementsAre(a, c));
}

/// Windows on two screens: a and b on the first, c and d on the second.
class ShownWindows : public testing::Test {
 protected:
  ShownWindows() {
    const auto first = screenNumbered(1);
    const auto second = screenNumbered(2);
    windows_ = {windowOn(first, a), windowOn(first, b), windowOn(second, c), windowOn(second, d)};
  }

  WindowKeySet shown(const std::optional<WindowKey>& focused = std::nullopt) { return memory_.assignVisibleWindows(windows_, focused); }
  void close(const WindowKey& key) {
    std::erase_if(windows_, [&](const ManagedWindow& window) { return window.key == key; });
  }

  std::vector<ManagedWindow> windows_;
  PlacementMemory memory_;
};

TEST_F(ShownWindows, EachScreenBeginsWithItsFirstWindow) {
  EXPECT_THAT(shown(), UnorderedElementsAre(a, c));
  EXPECT_THAT(memory_.visibleWindowKeysByScreen(),
              UnorderedElementsAre(Pair("display:1", WindowKeySet{a}), Pair("display:2", WindowKeySet{c})));
}

TEST_F(ShownWindows, AScreenWithoutTheFocusBeginsWithAPairWhereItCan) {
  memory_.setPlacement(a, right);
  memory_.setPlacement(b, left);

  EXPECT_THAT(shown(c), UnorderedElementsAre(a, b, c));
  EXPECT_THAT(memory_.windowPairings(), UnorderedElementsAre(Pair(a, b), Pair(b, a)));
}

TEST_F(ShownWindows, TheScreenOfTheFocusFollowsItAndOthersStay) {
  shown(d);
  EXPECT_THAT(shown(b), UnorderedElementsAre(b, d));
  EXPECT_THAT(shown(a), UnorderedElementsAre(a, d));
  EXPECT_THAT(shown(), UnorderedElementsAre(a, d));
}

TEST_F(ShownWindows, AFocusThatIsNotManagedChangesNothing) {
  shown(b);

  EXPECT_THAT(shown(WindowKey{9, 9}), UnorderedElementsAre(b, c));
}

TEST_F(ShownWindows, WhatAScreenShowedIsKeptWithoutLookingAtPlacements) {
  memory_.setPlacement(c, left);
  memory_.setPlacement(d, right);
  shown(c);
  memory_.setPlacement(c, full);
  memory_.setPlacement(d, full);

  EXPECT_THAT(shown(a), UnorderedElementsAre(a, c, d));
}

TEST_F(ShownWindows, AScreenWhoseWindowClosedShowsItsFirstOne) {
  shown(d);
  close(d);

  EXPECT_THAT(shown(a), UnorderedElementsAre(a, c));
}

TEST_F(ShownWindows, AScreenThatLostOneOfTwoShowsTheOther) {
  memory_.setPlacement(c, left);
  memory_.setPlacement(d, right);
  shown(c);
  close(c);

  EXPECT_THAT(shown(a), UnorderedElementsAre(a, d));
}

TEST_F(ShownWindows, AWindowThatMovedAwayIsNotRememberedWhereItWas) {
  shown(d);
  windows_[3].screen = windows_[0].screen;

  EXPECT_THAT(shown(a), UnorderedElementsAre(a, c));
}

TEST_F(ShownWindows, AScreenWithoutWindowsIsForgotten) {
  shown(d);
  close(c);
  close(d);
  shown(a);

  EXPECT_THAT(memory_.visibleWindowKeysByScreen(), UnorderedElementsAre(Pair("display:1", WindowKeySet{a})));
}

TEST_F(ShownWindows, WithoutWindowsEverythingIsForgotten) {
  shown(d);
  windows_.clear();

  EXPECT_THAT(shown(d), IsEmpty());
  EXPECT_THAT(memory_.visibleWindowKeysByScreen(), IsEmpty());
}

TEST_F(ShownWindows, ScreensThatShareAKeyShowTheirWindowsTogether) {
  const auto one = std::make_shared<const Screen>(Screen{test::laptopFrame, test::laptopVisible, std::nullopt});
  const auto other = std::make_shared<const Screen>(*one);
  windows_ = {windowOn(one, a), windowOn(other, b)};
  memory_.setPlacement(a, left);
  memory_.setPlacement(b, right);

  EXPECT_THAT(shown(a), UnorderedElementsAre(a, b));
  EXPECT_EQ(memory_.visibleWindowKeysByScreen().size(), 1);
}

}  // namespace
}  // namespace tilora
