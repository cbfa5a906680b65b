// The nearest rank.
#include "figures/statistics.h"

#include <algorithm>
#include <cmath>

namespace tilora::bench {

double quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
  return values[std::max<std::size_t>(rank, 1) - 1];
}

}  // namespace tilora::bench
