// Classes as the compiler writes them: loading, the layout of objects, and finding methods.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "runtime/runtime.h"

namespace tilora::objc {

struct Method {
  void* implementation;
  Selector* selector;
  const char* types;
};

/// The methods follow it in memory.
struct MethodList {
  MethodList* next;
  int count;
  std::size_t size;

  Method* begin() { return reinterpret_cast<Method*>(this + 1); }
  Method* end() { return begin() + count; }
};

struct Ivar {
  const char* name;
  const char* type;
  int* offset;
  std::uint32_t size;
  /// Bits 3 to 8: the binary logarithm of the alignment.
  std::uint32_t flags;
};

struct IvarList {
  int count;
  std::size_t size;

  Ivar& operator[](int index) {
    return *reinterpret_cast<Ivar*>(reinterpret_cast<char*>(this + 1) + static_cast<std::size_t>(index) * size);
  }
};

struct Class {
  Class* isa;
  Class* parent;
  const char* name;
  long version;
  unsigned long info;
  long instanceSize;
  IvarList* ivars;
  MethodList* methods;
  void* dispatchTable;
  void* construct;
  void* destruct;
  Class* firstChild;
  Class* sibling;
  void* protocols;
  void* extra;
  long abiVersion;
  void* properties;
};

struct Category {
  const char* name;
  const char* className;
  MethodList* instanceMethods;
  MethodList* classMethods;
  void* protocols;
  void* properties;
  void* classProperties;
};

/// What a compiled file tells of itself when it is loaded: the bounds of its sections.
struct Image {
  std::uint64_t version;
  Selector *firstSelector, *lastSelector;
  Class **firstClass, **lastClass;
  Class **firstClassReference, **lastClassReference;
  Category *firstCategory, *lastCategory;
};

extern "C" {
extern Class tinyStringClass __asm__("._OBJC_CLASS_NSTinyString");
Class _NSConcreteStackBlock{};
Class _NSConcreteGlobalBlock{};
Class _NSConcreteMallocBlock{};
}

namespace {

struct Registry {
  std::map<std::string, Class*> classes;
  std::vector<Category*> categories;
  std::set<const Class*> laidOut;
  bool isSettled = true;
};

Registry& registry() {
  static Registry all;
  return all;
}

constexpr long word = sizeof(void*);

long roundedUp(long value, long multiple) { return (value + multiple - 1) / multiple * multiple; }

/// Places the fields of a class behind those of its parent, and ties its metaclass to the parent's.
void layOut(Class* type) {
  if (!registry().laidOut.insert(type).second) return;
  long offset = 0;
  if (type->parent) {
    layOut(type->parent);
    offset = type->parent->instanceSize;
  }
  const int count = type->ivars ? type->ivars->count : 0;
  for (int index = 0; index < count; ++index) {
    Ivar& ivar = (*type->ivars)[index];
    offset = roundedUp(offset, 1L << (ivar.flags >> 3 & 0x3FU));
    *ivar.offset = static_cast<int>(offset);
    offset += ivar.size;
  }
  type->instanceSize = roundedUp(offset < word ? word : offset, word);
  const Class* root = type;
  while (root->parent) root = root->parent;
  type->isa->isa = root->isa;
  type->isa->parent = type->parent ? type->parent->isa : type;
}

void append(Class* type, MethodList* methods) {
  if (!methods) return;
  methods->next = type->methods;
  type->methods = methods;
}

void settle() {
  Registry& all = registry();
  if (all.isSettled) return;
  all.isSettled = true;
  for (const auto& [name, type] : all.classes) layOut(type);
  for (const Category* category : all.categories) {
    const auto extended = all.classes.find(category->className);
    if (extended == all.classes.end()) crash("a category extends a class that is not there:", category->className);
    append(extended->second, category->instanceMethods);
    append(extended->second->isa, category->classMethods);
  }
  all.categories.clear();
  const auto block = all.classes.find("NSBlock");
  if (block == all.classes.end()) crash("there is no class of blocks");
  for (Class* type : {&_NSConcreteStackBlock, &_NSConcreteGlobalBlock, &_NSConcreteMallocBlock}) *type = *block->second;
}

void* ownMethod(Class* type, const char* name) {
  for (MethodList* list = type->methods; list; list = list->next) {
    for (const Method& method : *list) {
      if (std::strcmp(method.selector->name, name) == 0) return method.implementation;
    }
  }
  return nullptr;
}

void* find(Class* type, const char* name) {
  for (; type; type = type->parent) {
    if (void* method = ownMethod(type, name)) return method;
  }
  return nullptr;
}

Class* classOf(const Object* object) { return isTagged(object) ? &tinyStringClass : object->isa; }

void callOwn(Class* type, const char* name, Object* object) {
  if (void* method = ownMethod(type, name)) reinterpret_cast<void (*)(Object*, Selector*)>(method)(object, nullptr);
}

void construct(Class* type, Object* object) {
  if (!type) return;
  construct(type->parent, object);
  callOwn(type, ".cxx_construct", object);
}

}  // namespace

void crash(const char* what, const char* detail) {
  std::fprintf(stderr, "fake Objective-C: %s %s\n", what, detail);
  std::abort();
}

bool isBlock(const Object* object) {
  return object->isa == &_NSConcreteStackBlock || object->isa == &_NSConcreteGlobalBlock || object->isa == &_NSConcreteMallocBlock;
}

bool isOnStack(const Object* object) { return object->isa == &_NSConcreteStackBlock; }

std::size_t sizeOf(Class* type) {
  settle();
  return static_cast<std::size_t>(type->instanceSize);
}

void constructMembers(Object* object) { construct(object->isa, object); }

void destroyMembers(Object* object) {
  for (Class* type = object->isa; type; type = type->parent) callOwn(type, ".cxx_destruct", object);
}

void* methodFor(Object* receiver, const Selector* selector) {
  settle();
  checkIsAlive(receiver, selector->name);
  if (void* method = find(classOf(receiver), selector->name)) return method;
  const std::string message = std::string(classOf(receiver)->name) + " " + selector->name;
  crash("nobody answers the message", message.c_str());
}

bool responds(Object* object, const Selector* selector) {
  settle();
  return object && find(classOf(object), selector->name);
}

bool isKind(Object* object, const Class* type) {
  settle();
  for (const Class* own = classOf(object); own; own = own->parent) {
    if (own == type) return true;
  }
  return false;
}

}  // namespace tilora::objc

using namespace tilora::objc;

extern "C" {

void __objc_load(Image* image) {
  Registry& all = registry();
  all.isSettled = false;
  for (Class** type = image->firstClass; type < image->lastClass; ++type) {
    if (*type) all.classes[(*type)->name] = *type;
  }
  for (Category* category = image->firstCategory; category < image->lastCategory; ++category) {
    if (category->className) all.categories.push_back(category);
  }
}

struct Super {
  Object* receiver;
  Class* type;
};

void* objc_msg_lookup_super(Super* super, Selector* selector) {
  settle();
  if (void* method = find(super->type, selector->name)) return method;
  crash("no parent answers the message", selector->name);
}

/// Called by objc_msgSend with every receiver but nil.
void* tilora_objc_method(Object* receiver, Selector* selector) { return methodFor(receiver, selector); }

}  // extern "C"
