// What is told of many measurements of the same thing.
#pragma once

#include <vector>

namespace tilora::bench {

inline constexpr double median = 0.5;
inline constexpr double nearlyAll = 0.95;

/// The value below which `share` of the sorted values lie (the nearest rank). The list may not be empty.
double quantile(std::vector<double> values, double share);

}  // namespace tilora::bench
