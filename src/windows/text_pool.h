// Texts that live and die together.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace tilora {

/// Holds copies of texts until its end. They stay where they are when the pool is moved.
class TextPool {
 public:
  std::string_view keep(std::string_view text) {
    if (text.size() > left_) addBlock(text.size());
    char* const kept = next_;
    std::copy(text.begin(), text.end(), kept);
    next_ += text.size();
    left_ -= text.size();
    return {kept, text.size()};
  }

 private:
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): its length is chosen at run time, and nothing fills it before it is used.
  using Block = char[];

  static constexpr std::size_t smallestBlock = 4096;

  void addBlock(std::size_t atLeast) {
    left_ = std::max(atLeast, smallestBlock << std::min<std::size_t>(blocks_.size(), 8));
    next_ = blocks_.emplace_back(std::make_unique_for_overwrite<Block>(left_)).get();
  }

  std::vector<std::unique_ptr<Block>> blocks_;
  char* next_ = nullptr;
  std::size_t left_ = 0;
};

/// Whether two texts are equal; found out at once when they are the same piece of memory.
inline bool isSameText(std::string_view a, std::string_view b) { return (a.data() == b.data() && a.size() == b.size()) || a == b; }

}  // namespace tilora
