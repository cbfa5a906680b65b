// When two window keys are the same.
#include "windows/window_key.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace tilora {
namespace {

TEST(WindowKey, IsEqualWhenProcessAndNumberAre) {
  EXPECT_EQ((WindowKey{100, 7}), (WindowKey{100, 7}));
  EXPECT_NE((WindowKey{100, 7}), (WindowKey{101, 7}));
  EXPECT_NE((WindowKey{100, 7}), (WindowKey{100, 8}));
}

TEST(WindowKey, HashesEqualKeysEquallyAndSpreadsNeighbours) {
  std::unordered_set<std::size_t> hashes;
  for (ProcessId pid = -50; pid < 50; ++pid) {
    for (std::int64_t number = -50; number < 50; ++number) hashes.insert(std::hash<WindowKey>{}({pid, number}));
  }

  EXPECT_EQ(hashes.size(), 10'000);
  EXPECT_EQ(std::hash<WindowKey>{}({100, 7}), std::hash<WindowKey>{}({100, 7}));
}

}  // namespace
}  // namespace tilora
