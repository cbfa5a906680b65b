// A set whose keys lie in one piece of memory, for the sets that every pass builds anew.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

namespace tilora {

/// Keys in the order in which they first came, none twice. Inserting and finding take constant time; a set of few keys is searched in its
/// order and needs no table. At most 2^31 keys.
template <class Key>
class FlatKeySet {
 public:
  using value_type = Key;
  using const_iterator = typename std::vector<Key>::const_iterator;

  FlatKeySet() = default;
  FlatKeySet(std::initializer_list<Key> keys) { insert(keys.begin(), keys.end()); }

  std::size_t size() const { return keys_.size(); }
  bool empty() const { return keys_.empty(); }
  const_iterator begin() const { return keys_.begin(); }
  const_iterator end() const { return keys_.end(); }

  /// Makes room for `count` keys.
  void reserve(std::size_t count) {
    keys_.reserve(count);
    if (count > searchedInOrder && slots_.size() < 2 * count) rebuild(count);
  }

  /// Whether the key is new.
  bool insert(const Key& key) {
    const std::size_t before = keys_.size();
    return placeOf(key) == before;
  }
  template <class Iterator>
  void insert(Iterator first, Iterator last) {
    for (; first != last; ++first) insert(*first);
  }

  /// The place of a key in the order, which is the last one if it is new.
  std::size_t placeOf(const Key& key) {
    if (slots_.empty()) {
      if (const auto place = searched(key)) return *place;
      if (keys_.empty()) keys_.reserve(searchedInOrder);
      keys_.push_back(key);
      if (keys_.size() > searchedInOrder) rebuild(2 * keys_.size());
      return keys_.size() - 1;
    }
    std::uint32_t& slot = slots_[slotOf(key)];
    if (slot != freeSlot) return slot - 1;
    keys_.push_back(key);
    slot = static_cast<std::uint32_t>(keys_.size());
    if (2 * keys_.size() > slots_.size()) rebuild(2 * keys_.size());
    return keys_.size() - 1;
  }

  bool contains(const Key& key) const { return slots_.empty() ? searched(key).has_value() : slots_[slotOf(key)] != freeSlot; }

  /// Whether both hold the same keys, in whichever order.
  bool operator==(const FlatKeySet& other) const {
    return size() == other.size() && std::all_of(begin(), end(), [&](const Key& key) { return other.contains(key); });
  }

 private:
  static constexpr std::size_t searchedInOrder = 8;
  /// Slots hold the place of their key plus one.
  static constexpr std::uint32_t freeSlot = 0;

  std::optional<std::size_t> searched(const Key& key) const {
    const auto found = std::find(keys_.begin(), keys_.end(), key);
    if (found == keys_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - keys_.begin());
  }

  /// The slot of a key, or the free slot where it belongs.
  std::size_t slotOf(const Key& key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = std::hash<Key>{}(key)&mask;
    while (slots_[slot] != freeSlot && !(keys_[slots_[slot] - 1] == key)) slot = (slot + 1) & mask;
    return slot;
  }

  /// At most half of the slots are taken with `count` keys; their number is a power of two.
  void rebuild(std::size_t count) {
    std::size_t slots = 4 * searchedInOrder;
    while (slots < 2 * count) slots *= 2;
    slots_.assign(slots, freeSlot);
    for (std::size_t place = 0; place < keys_.size(); ++place) slots_[slotOf(keys_[place])] = static_cast<std::uint32_t>(place + 1);
  }

  std::vector<Key> keys_;
  /// Empty while the keys are searched in their order.
  std::vector<std::uint32_t> slots_;
};

}  // namespace tilora
