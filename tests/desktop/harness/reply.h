// Ownership of what xcb allocates.
#pragma once

#include <cstdlib>
#include <memory>

namespace tilora::harness {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an error or an event that xcb handed out; freed with free(3).
template <class T>
using Reply = std::unique_ptr<T, FreeDeleter>;

}  // namespace tilora::harness
