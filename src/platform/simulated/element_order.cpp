// The order is a list of chunks of bounded length, and each element knows its chunk.
#include "platform/simulated/element_order.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tilora::simulated {
namespace {

constexpr std::size_t longestChunk = 256;

}  // namespace

void ElementOrder::insert(std::size_t index, Element element) {
  if (chunks_.empty()) chunks_.emplace_back();
  auto chunk = std::prev(chunks_.end());
  std::size_t position = chunk->size();
  if (index < size()) {
    chunk = chunks_.begin();
    for (position = index; position > chunk->size(); ++chunk) position -= chunk->size();
  }
  chunkOf_[element.get()] = chunk;
  chunk->insert(chunk->begin() + static_cast<std::ptrdiff_t>(position), std::move(element));
  if (chunk->size() > longestChunk) split(chunk);
}

void ElementOrder::split(Chunks::iterator chunk) {
  const auto middle = chunk->begin() + static_cast<std::ptrdiff_t>(chunk->size() / 2);
  const auto second = chunks_.emplace(std::next(chunk), std::make_move_iterator(middle), std::make_move_iterator(chunk->end()));
  chunk->erase(middle, chunk->end());
  for (const auto& element : *second) chunkOf_[element.get()] = second;
}

void ElementOrder::erase(const Element& element) {
  const auto found = chunkOf_.find(element.get());
  if (found == chunkOf_.end()) return;
  const auto chunk = found->second;
  chunkOf_.erase(found);
  chunk->erase(std::find(chunk->begin(), chunk->end(), element));
  if (chunk->empty()) chunks_.erase(chunk);
}

std::vector<Element> ElementOrder::elements() const {
  std::vector<Element> all;
  all.reserve(size());
  for (const auto& chunk : chunks_) all.insert(all.end(), chunk.begin(), chunk.end());
  return all;
}

}  // namespace tilora::simulated
