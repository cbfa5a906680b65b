// Conversions of numbers that must fit: one that does not is a fault that ends the process.
#pragma once

#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

namespace tilora {

/// `value` as the narrower or differently signed `To`. A value outside its range is fatal.
template <class To, class From>
To checkedInteger(From value) {
  if (!std::in_range<To>(value)) std::abort();
  return static_cast<To>(value);
}

/// A number of points without fraction as a signed 64-bit integer. Not-a-number, infinity and a value outside the range are fatal.
inline long long checkedWholeNumber(double value) {
  constexpr double bound = 9223372036854775808.0;  // 2^63
  if (!(value >= -bound && value < bound)) std::abort();
  return static_cast<long long>(value);
}

}  // namespace tilora
