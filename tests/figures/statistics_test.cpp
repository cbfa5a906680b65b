// The nearest rank.
#include "figures/statistics.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tilora::bench {
namespace {

std::vector<double> upTo(int last) {
  std::vector<double> values(static_cast<std::size_t>(last));
  std::iota(values.rbegin(), values.rend(), 1.0);
  return values;
}

TEST(StatisticsTest, AQuantileIsTheLowestValueThatTheShareDoesNotExceed) {
  EXPECT_EQ(quantile(upTo(100), nearlyAll), 95);
  EXPECT_EQ(quantile(upTo(100), median), 50);
  EXPECT_EQ(quantile(upTo(20), nearlyAll), 19);
  EXPECT_EQ(quantile(upTo(10), nearlyAll), 10);
  EXPECT_EQ(quantile(upTo(5), median), 3);
}

TEST(StatisticsTest, TheOnlyValueIsEveryQuantile) {
  EXPECT_EQ(quantile({7}, 0), 7);
  EXPECT_EQ(quantile({7}, median), 7);
  EXPECT_EQ(quantile({7}, 1), 7);
}

}  // namespace
}  // namespace tilora::bench
