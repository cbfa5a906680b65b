// Counting references: what ARC compiles to. Every object stays in memory until the process ends.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "runtime/runtime.h"

extern "C" {
void* _Block_copy(const void* pointer);
void _Block_release(const void* pointer);
}

namespace tilora::objc {

extern long liveBlocks;

namespace {

struct Count {
  long references = 1;
  bool isGone = false;
  bool isImmortal = false;
};

/// The objects that have a count: not classes, constants and blocks.
std::unordered_map<const Object*, Count>& counts() {
  // Never destroyed: whoever lets go of an object while the program ends still finds it.
  static auto& all = *std::make_unique<std::unordered_map<const Object*, Count>>().release();
  return all;
}

/// The weak references to each object.
std::unordered_map<const Object*, std::set<Object**>>& weakReferences() {
  static auto& all = *std::make_unique<std::unordered_map<const Object*, std::set<Object**>>>().release();
  return all;
}

std::vector<Object*>& autoreleased() {
  static std::vector<Object*> pool;
  return pool;
}

Count* countOf(const Object* object) {
  const auto found = counts().find(object);
  return found == counts().end() ? nullptr : &found->second;
}

Count* livingCountOf(const Object* object, const char* operation) {
  Count* count = countOf(object);
  if (count && count->isGone) crash("an object was used after its last reference was released:", operation);
  return count;
}

const Selector deallocSelector{"dealloc", "v@:"};

void end(Object* object) {
  for (Object** reference : weakReferences()[object]) *reference = nullptr;
  weakReferences().erase(object);
  reinterpret_cast<void (*)(Object*, const Selector*)>(methodFor(object, &deallocSelector))(object, &deallocSelector);
}

}  // namespace

Object* allocate(Class* type) {
  auto* object = static_cast<Object*>(std::calloc(1, sizeOf(type)));
  object->isa = type;
  counts().emplace(object, Count{});
  constructMembers(object);
  return object;
}

void destroy(Object* object) {
  destroyMembers(object);
  counts().at(object).isGone = true;
}

void checkIsAlive(const Object* object, const char* selector) {
  if (!isTagged(object)) livingCountOf(object, selector);
}

void makeImmortal(Object* object) { counts().at(object).isImmortal = true; }

long liveObjects() {
  long live = liveBlocks;
  for (const auto& [object, count] : counts()) live += count.isGone || count.isImmortal ? 0 : 1;
  return live;
}

}  // namespace tilora::objc

using namespace tilora::objc;

extern "C" {

Object* objc_retain(Object* object) {
  if (!object || isTagged(object)) return object;
  if (isOnStack(object)) return object;
  if (isBlock(object)) return static_cast<Object*>(_Block_copy(object));
  if (Count* count = livingCountOf(object, "retain")) ++count->references;
  return object;
}

void objc_release(Object* object) {
  if (!object || isTagged(object)) return;
  if (isBlock(object)) return _Block_release(object);
  Count* count = livingCountOf(object, "release");
  if (!count || count->isImmortal) return;
  if (--count->references == 0) end(object);
}

Object* objc_autorelease(Object* object) {
  if (object) autoreleased().push_back(object);
  return object;
}

void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(autoreleased().size()); }

void objc_autoreleasePoolPop(void* mark) {
  auto& pool = autoreleased();
  while (pool.size() > reinterpret_cast<std::size_t>(mark)) {
    Object* object = pool.back();
    pool.pop_back();
    objc_release(object);
  }
}

Object* objc_alloc(Class* type) { return allocate(type); }
Object* objc_retainAutorelease(Object* object) { return objc_autorelease(objc_retain(object)); }
Object* objc_autoreleaseReturnValue(Object* object) { return objc_autorelease(object); }
Object* objc_retainAutoreleaseReturnValue(Object* object) { return objc_retainAutorelease(object); }
Object* objc_retainAutoreleasedReturnValue(Object* object) { return objc_retain(object); }
Object* objc_unsafeClaimAutoreleasedReturnValue(Object* object) { return object; }
Object* objc_retainBlock(Object* block) { return static_cast<Object*>(_Block_copy(block)); }

void objc_storeStrong(Object** place, Object* value) {
  Object* before = *place;
  objc_retain(value);
  *place = value;
  objc_release(before);
}

Object* objc_storeWeak(Object** place, Object* value) {
  if (*place) weakReferences()[*place].erase(place);
  if (value && !isTagged(value) && livingCountOf(value, "weak reference")) weakReferences()[value].insert(place);
  *place = value;
  return value;
}

Object* objc_initWeak(Object** place, Object* value) {
  *place = nullptr;
  return objc_storeWeak(place, value);
}

void objc_destroyWeak(Object** place) { objc_storeWeak(place, nullptr); }
Object* objc_loadWeakRetained(Object** place) { return objc_retain(*place); }
Object* objc_loadWeak(Object** place) { return objc_autorelease(objc_loadWeakRetained(place)); }

void objc_copyWeak(Object** to, Object** from) { objc_initWeak(to, *from); }

void objc_moveWeak(Object** to, Object** from) {
  objc_copyWeak(to, from);
  objc_destroyWeak(from);
}

Object* objc_getProperty(Object* self, Selector* /*command*/, std::ptrdiff_t offset, bool /*isAtomic*/) {
  return objc_retainAutorelease(*reinterpret_cast<Object**>(reinterpret_cast<char*>(self) + offset));
}

void objc_setProperty_nonatomic(Object* self, Selector* /*command*/, Object* value, std::ptrdiff_t offset) {
  objc_storeStrong(reinterpret_cast<Object**>(reinterpret_cast<char*>(self) + offset), value);
}

void objc_setProperty_atomic(Object* self, Selector* command, Object* value, std::ptrdiff_t offset) {
  objc_setProperty_nonatomic(self, command, value, offset);
}

/// Of what is copied here only blocks can change: for the others a reference is as good.
void objc_setProperty_nonatomic_copy(Object* self, Selector* /*command*/, Object* value, std::ptrdiff_t offset) {
  auto** place = reinterpret_cast<Object**>(reinterpret_cast<char*>(self) + offset);
  Object* before = *place;
  *place = value && !isTagged(value) && isBlock(value) ? objc_retainBlock(value) : objc_retain(value);
  objc_release(before);
}

void objc_setProperty_atomic_copy(Object* self, Selector* command, Object* value, std::ptrdiff_t offset) {
  objc_setProperty_nonatomic_copy(self, command, value, offset);
}

void objc_setProperty(Object* self, Selector* command, Object* value, std::ptrdiff_t offset, bool /*isAtomic*/, bool copies) {
  copies ? objc_setProperty_nonatomic_copy(self, command, value, offset) : objc_setProperty_nonatomic(self, command, value, offset);
}

void objc_enumerationMutation(Object* /*collection*/) { crash("a collection changed while it was enumerated"); }

}  // extern "C"
