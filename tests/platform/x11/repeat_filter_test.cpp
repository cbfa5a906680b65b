// Repeats of a held key are told from presses of a finger, also when a release is never seen.
#include "platform/x11/repeat_filter.h"

#include <gtest/gtest.h>

#include <limits>

namespace tilora::x11 {
namespace {

using std::chrono::milliseconds;

constexpr xcb_keycode_t key = 34;
constexpr xcb_keycode_t otherKey = 35;

RepeatFilter filter(RepeatTimes times = {.delay = milliseconds(500), .interval = milliseconds(100)}) {
  return RepeatFilter([times] { return times; });
}

TEST(RepeatFilter, OfAHeldKeyOnlyTheFirstPressCounts) {
  auto presses = filter();
  EXPECT_TRUE(presses.isFirstPress(key, 1000));
  EXPECT_FALSE(presses.isFirstPress(key, 1500));
  EXPECT_FALSE(presses.isFirstPress(key, 1600));
}

TEST(RepeatFilter, APressAfterTheReleaseCountsHoweverSoonItComes) {
  auto presses = filter();
  EXPECT_TRUE(presses.isFirstPress(key, 1000));
  presses.released(key);
  EXPECT_TRUE(presses.isFirstPress(key, 1001));
}

TEST(RepeatFilter, AnotherKeyCountsWhileOneIsHeld) {
  auto presses = filter();
  EXPECT_TRUE(presses.isFirstPress(key, 1000));
  EXPECT_TRUE(presses.isFirstPress(otherKey, 1200));
  EXPECT_FALSE(presses.isFirstPress(key, 1500));
}

TEST(RepeatFilter, AKeyWhoseReleaseWentUnseenCountsUnlessARepeatIsDue) {
  auto presses = filter();
  presses.isFirstPress(key, 1000);
  presses.isFirstPress(otherKey, 1200);
  presses.released(otherKey);
  EXPECT_FALSE(presses.isFirstPress(key, 1500)) << "the first repeat comes after the delay";
  presses.isFirstPress(otherKey, 1550);
  presses.released(otherKey);
  EXPECT_FALSE(presses.isFirstPress(key, 1600)) << "the next one after the interval";
  presses.isFirstPress(otherKey, 1650);
  presses.released(otherKey);
  EXPECT_TRUE(presses.isFirstPress(key, 1800)) << "no repeat is due here: a finger pressed it again";
}

TEST(RepeatFilter, AfterTheKeyboardWasTakenAKeyCountsUnlessARepeatIsDue) {
  auto presses = filter();
  presses.isFirstPress(key, 1000);
  presses.keyboardTaken();
  EXPECT_FALSE(presses.isFirstPress(key, 1500));
  presses.keyboardTaken();
  EXPECT_TRUE(presses.isFirstPress(key, 1800));
  EXPECT_FALSE(presses.isFirstPress(key, 1850)) << "it is watched again";
}

TEST(RepeatFilter, ARepeatIsAllowedToBeALittleEarlyOrLate) {
  for (const xcb_timestamp_t offset : {470U, 530U}) {
    auto presses = filter();
    presses.isFirstPress(key, 1000);
    presses.released(otherKey);
    EXPECT_FALSE(presses.isFirstPress(key, 1000 + offset)) << offset;
  }
  for (const xcb_timestamp_t offset : {469U, 531U}) {
    auto presses = filter();
    presses.isFirstPress(key, 1000);
    presses.released(otherKey);
    EXPECT_TRUE(presses.isFirstPress(key, 1000 + offset)) << offset;
  }
}

TEST(RepeatFilter, TheServersTimeMayWrapWhileAKeyIsHeld) {
  auto presses = filter();
  presses.isFirstPress(key, std::numeric_limits<xcb_timestamp_t>::max() - 99);
  presses.released(otherKey);
  EXPECT_FALSE(presses.isFirstPress(key, 400));
}

TEST(RepeatFilter, TheRepeatTimesAreAskedForOnlyWhenTheyMatter) {
  int asked = 0;
  RepeatFilter presses([&asked] {
    ++asked;
    return RepeatTimes{};
  });
  presses.isFirstPress(key, 1000);
  presses.isFirstPress(key, 1660);
  presses.released(key);
  presses.isFirstPress(key, 1700);
  EXPECT_EQ(asked, 0);
}

}  // namespace
}  // namespace tilora::x11
