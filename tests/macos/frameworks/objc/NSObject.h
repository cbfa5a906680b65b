// The root of all classes: what the macOS desktop uses of its public interface, declared from its documentation.
#pragma once

#include <objc/objc.h>

#if defined(__LP64__)
typedef long NSInteger;
typedef unsigned long NSUInteger;
#else
#error "There is no macOS desktop with less than 64 bits."
#endif

#pragma clang assume_nonnull begin

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property(readonly) NSUInteger hash;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (instancetype)alloc;
+ (instancetype)new;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
@end

#pragma clang assume_nonnull end
