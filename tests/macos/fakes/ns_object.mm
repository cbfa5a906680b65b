// The root of all classes, over the test runtime. Counts references by hand, since it is what the counting rests on.
#import <Foundation/Foundation.h>

#include "fakes/app_kit_state.h"
#include "fakes/foundation_objects.h"
#include "runtime/runtime.h"

using namespace tilora;

namespace {

objc::Object* plain(id object) { return reinterpret_cast<objc::Object*>(object); }
objc::Class* plain(Class type) { return reinterpret_cast<objc::Class*>(type); }

}  // namespace

@implementation NSObject

+ (instancetype)alloc {
  return reinterpret_cast<id>(objc::allocate(plain(reinterpret_cast<Class>(self))));
}

+ (instancetype)new {
  return [[self alloc] init];
}

+ (Class)class {
  return reinterpret_cast<Class>(self);
}

- (instancetype)init {
  return self;
}

- (void)dealloc {
  objc::destroy(plain(self));
}

- (BOOL)isEqual:(id)object {
  return self == object;
}

- (NSUInteger)hash {
  return reinterpret_cast<NSUInteger>(self);
}

- (BOOL)isKindOfClass:(Class)aClass {
  return objc::isKind(plain(self), plain(aClass));
}

- (BOOL)respondsToSelector:(SEL)aSelector {
  return objc::responds(plain(self), reinterpret_cast<const objc::Selector*>(aSelector));
}

@end

@interface NSBlock : NSObject
@end

@implementation NSBlock
@end

namespace tilora::macos::fake {

void markImmortal(id object) { objc::makeImmortal(plain(object)); }
long liveObjectiveCObjects() { return objc::liveObjects(); }

}  // namespace tilora::macos::fake
