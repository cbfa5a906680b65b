// A long ordered list of elements that stays fast when one is inserted or taken out anywhere.
#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

#include "platform/accessibility.h"

namespace tilora::simulated {

/// Elements in an order of their own, none twice. Inserting and erasing cost far less than the length of the list.
class ElementOrder {
 public:
  std::size_t size() const { return chunkOf_.size(); }
  /// Inserts `element` before the one that is at `index`; at `size()` or beyond it, at the end.
  void insert(std::size_t index, Element element);
  /// Takes an element out; one that is not there is passed over.
  void erase(const Element& element);
  std::vector<Element> elements() const;

 private:
  using Chunk = std::vector<Element>;
  using Chunks = std::list<Chunk>;

  void split(Chunks::iterator chunk);

  Chunks chunks_;
  std::unordered_map<const AccessibilityElement*, Chunks::iterator> chunkOf_;
};

}  // namespace tilora::simulated
