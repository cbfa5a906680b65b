// A small Objective-C runtime for tests: the interface that clang compiles to under -fobjc-runtime=gnustep-2.0, for x86-64, with every
// object counted and none usable once it is gone. It knows no exceptions, no protocols and no threads.
#pragma once

#include <cstdint>

namespace tilora::objc {

struct Class;

/// What every object begins with.
struct Object {
  Class* isa;
};

/// A message's name and the types of its arguments.
struct Selector {
  const char* name;
  const char* types;
};

/// Ends the process with a message: a program did what crashes it on the real system, or something that the fakes do not know.
[[noreturn]] void crash(const char* what, const char* detail = "");

/// Whether an object is one of those encoded in its reference: a constant string of at most 8 characters.
inline bool isTagged(const Object* object) { return (reinterpret_cast<std::uintptr_t>(object) & 7U) != 0; }
/// Whether an object is a block, on the stack or not.
bool isBlock(const Object* object);
/// Whether it is a block that a reference does not keep: it goes with its scope.
bool isOnStack(const Object* object);

/// A new object with one reference, its C++ members constructed.
Object* allocate(Class* type);
/// What an object's last method does: destroys its C++ members. Its memory stays, so that whoever uses it later is found out.
void destroy(Object* object);
/// Crashes when the object is gone.
void checkIsAlive(const Object* object, const char* selector);
/// From now on the object does not count: one that the system keeps for good.
void makeImmortal(Object* object);

/// Objects and blocks on the heap that are not gone.
long liveObjects();

/// The method that answers `selector`; crashes when the object is gone or has none.
void* methodFor(Object* receiver, const Selector* selector);
bool responds(Object* object, const Selector* selector);
bool isKind(Object* object, const Class* type);
/// Calls .cxx_construct of the class and of all above it, the root's first; .cxx_destruct the other way round.
void constructMembers(Object* object);
void destroyMembers(Object* object);
/// The bytes of an object of that class.
std::size_t sizeOf(Class* type);

}  // namespace tilora::objc
