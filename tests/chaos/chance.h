// What is drawn by lot, so that the same seed draws the same again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace tilora::chaos {

class Chance {
 public:
  explicit Chance(std::uint64_t seed) : numbers_(seed) {}

  /// A number of `least` to `most`, both included; `least` when there is none.
  int between(int least, int most) {
    if (most <= least) return least;
    return least + static_cast<int>(numbers_() % static_cast<std::uint64_t>(static_cast<std::int64_t>(most) - least + 1));
  }
  bool oneIn(int number) { return between(1, number) == 1; }
  /// One of a container that is not empty.
  template <class Container>
  auto& pick(Container& from) {
    return from[static_cast<std::size_t>(between(0, static_cast<int>(from.size()) - 1))];
  }

 private:
  std::mt19937_64 numbers_;
};

}  // namespace tilora::chaos
