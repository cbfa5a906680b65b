// Blocks: copying them to the heap with what they capture, and letting go of it.
#include <cstdlib>
#include <cstring>

#include "runtime/runtime.h"

namespace tilora::objc {

/// Blocks on the heap.
long liveBlocks = 0;

struct Class;
extern "C" {
extern Class _NSConcreteStackBlock;
extern Class _NSConcreteMallocBlock;
Object* objc_retain(Object* object);
void objc_release(Object* object);
void* _Block_copy(const void* pointer);
void _Block_release(const void* pointer);
}

namespace {

struct BlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  void (*copy)(void* to, void* from);
  void (*dispose)(void* block);
};

struct Block {
  void* isa;
  int flags;
  int references;
  void (*invoke)();
  BlockDescriptor* descriptor;
};

/// A variable marked __block.
struct SharedVariable {
  void* isa;
  SharedVariable* forwarding;
  int flags;
  int size;
  void (*keep)(void* to, void* from);
  void (*destroy)(void* variable);
};

constexpr int isGlobal = 1 << 28;
constexpr int hasHelpers = 1 << 25;
constexpr int isOnHeap = 1 << 24;
constexpr int oneReference = 2;
constexpr int referenceMask = 0xFFFE;

/// What a captured field is (BLOCK_FIELD_IS_*), and that the call comes from a variable marked __block.
constexpr int fieldMask = 0x0F;
constexpr int fieldIsObject = 3;
constexpr int fieldIsBlock = 7;
constexpr int fieldIsShared = 8;
constexpr int callerIsVariable = 0x80;

SharedVariable* onHeap(SharedVariable* variable) {
  variable = variable->forwarding;
  if (variable->flags & isOnHeap) {
    variable->flags += oneReference;
    return variable;
  }
  auto* copy = static_cast<SharedVariable*>(std::malloc(static_cast<std::size_t>(variable->size)));
  std::memcpy(static_cast<void*>(copy), variable, static_cast<std::size_t>(variable->size));
  // One reference of the variable's own scope, one of the block.
  copy->flags = variable->flags | isOnHeap | 2 * oneReference;
  copy->forwarding = copy;
  variable->forwarding = copy;
  if (variable->flags & hasHelpers) copy->keep(copy, variable);
  return copy;
}

void release(SharedVariable* variable) {
  variable = variable->forwarding;
  if (!(variable->flags & isOnHeap)) return;
  variable->flags -= oneReference;
  if (variable->flags & referenceMask) return;
  if (variable->flags & hasHelpers) variable->destroy(variable);
  std::free(variable);
}

}  // namespace
}  // namespace tilora::objc

using namespace tilora::objc;

extern "C" {

void* _Block_copy(const void* pointer) {
  auto* block = static_cast<Block*>(const_cast<void*>(pointer));
  if (!block || (block->flags & isGlobal)) return block;
  if (block->isa == &_NSConcreteMallocBlock) {
    ++block->references;
    return block;
  }
  auto* copy = static_cast<Block*>(std::malloc(block->descriptor->size));
  std::memcpy(static_cast<void*>(copy), block, block->descriptor->size);
  copy->isa = &_NSConcreteMallocBlock;
  copy->references = 1;
  ++liveBlocks;
  if (block->flags & hasHelpers) block->descriptor->copy(copy, block);
  return copy;
}

void _Block_release(const void* pointer) {
  auto* block = static_cast<Block*>(const_cast<void*>(pointer));
  if (!block || block->isa != &_NSConcreteMallocBlock) return;
  if (--block->references > 0) return;
  if (block->flags & hasHelpers) block->descriptor->dispose(block);
  --liveBlocks;
  std::free(block);
}

void _Block_object_assign(void* place, const void* value, int flags) {
  auto* object = const_cast<void*>(value);
  const bool isBorrowed = (flags & callerIsVariable) != 0;
  switch (flags & fieldMask) {
    case fieldIsObject:
      *static_cast<void**>(place) = isBorrowed ? object : objc_retain(static_cast<Object*>(object));
      break;
    case fieldIsBlock:
      *static_cast<void**>(place) = isBorrowed ? object : _Block_copy(object);
      break;
    case fieldIsShared:
      *static_cast<void**>(place) = onHeap(static_cast<SharedVariable*>(object));
      break;
    default:
      crash("a block captures something that the runtime does not know");
  }
}

void _Block_object_dispose(const void* value, int flags) {
  auto* object = const_cast<void*>(value);
  const bool isBorrowed = (flags & callerIsVariable) != 0;
  switch (flags & fieldMask) {
    case fieldIsObject:
      if (!isBorrowed) objc_release(static_cast<Object*>(object));
      break;
    case fieldIsBlock:
      if (!isBorrowed) _Block_release(object);
      break;
    case fieldIsShared:
      release(static_cast<SharedVariable*>(object));
      break;
    default:
      crash("a block captured something that the runtime does not know");
  }
}

}  // extern "C"
