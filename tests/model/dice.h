// Random choices that are the same for the same seed, with every compiler.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tilora::model {

/// SplitMix64.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
  }
  /// From 0 to `count` - 1; `count` is not 0.
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }
  bool percent(std::size_t chance) { return below(100) < chance; }
  template <class List>
  auto oneOf(const List& list) {
    return list[below(list.size())];
  }

 private:
  std::uint64_t state_;
};

}  // namespace tilora::model
