// A set in one piece of memory behaves like any other set.
#include "windows/flat_key_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <unordered_set>

namespace tilora {
namespace {

using testing::ElementsAre;

using Set = FlatKeySet<int>;

TEST(FlatKeySet, KeepsTheOrderInWhichKeysFirstCame) {
  Set set = {3, 1, 2, 1, 3};

  EXPECT_THAT(set, ElementsAre(3, 1, 2));
  EXPECT_FALSE(set.insert(1));
  EXPECT_TRUE(set.insert(0));
  EXPECT_THAT(set, ElementsAre(3, 1, 2, 0));
}

TEST(FlatKeySet, TellsThePlaceOfAKey) {
  Set set = {30, 10};

  EXPECT_EQ(set.placeOf(10), 1);
  EXPECT_EQ(set.placeOf(20), 2);
  EXPECT_EQ(set.placeOf(30), 0);
  EXPECT_EQ(set.size(), 3);
}

TEST(FlatKeySet, IsEqualInWhicheverOrder) {
  EXPECT_EQ((Set{1, 2, 3}), (Set{3, 2, 1}));
  EXPECT_NE((Set{1, 2}), (Set{1, 2, 3}));
  EXPECT_NE((Set{1, 2}), (Set{1, 3}));
  EXPECT_EQ(Set{}, Set{});
}

/// The number of keys that room is made for at first.
class FilledFlatKeySet : public testing::TestWithParam<std::size_t> {};

TEST_P(FilledFlatKeySet, HoldsWhatAnyOtherSetWouldHold) {
  Set set;
  set.reserve(GetParam());
  std::unordered_set<int> expected;
  std::minstd_rand random(7);
  for (int i = 0; i < 5000; ++i) {
    const int key = static_cast<int>(random() % 3000) * 64;
    EXPECT_EQ(set.insert(key), expected.insert(key).second);
    EXPECT_EQ(set.size(), expected.size());
  }
  for (int key = -64; key < 3001 * 64; key += 32) EXPECT_EQ(set.contains(key), expected.contains(key)) << key;
  EXPECT_THAT(set, testing::UnorderedElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(Rooms, FilledFlatKeySet, testing::Values(0, 1, 8, 9, 100, 10'000));

}  // namespace
}  // namespace tilora
