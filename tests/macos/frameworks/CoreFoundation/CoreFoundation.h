// Core Foundation: what the macOS desktop uses of its public interface, declared from its documentation.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if !defined(__clang__)
#define _Nullable
#define _Nonnull
#define CF_RETURNS_RETAINED
#define CF_BRIDGED_TYPE(type)
#else
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_BRIDGED_TYPE(type) __attribute__((objc_bridge(type)))
#endif

#if defined(__cplusplus)
#define CF_EXPORT extern "C"
#else
#define CF_EXPORT extern
#endif

// Old types of the system, of which the program uses none: their names must not be in its way.
struct Point {
  short v;
  short h;
};
typedef struct Point Point;
struct Rect {
  short top;
  short left;
  short bottom;
  short right;
};
typedef struct Rect Rect;
typedef long Size;

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef int32_t SInt32;
typedef uint32_t UInt32;
typedef uint16_t UniChar;
typedef double CGFloat;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef const void* CFTypeRef;

typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator* CFAllocatorRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean* CFBooleanRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber* CFNumberRef;
typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;

typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

typedef enum CFNumberType : CFIndex {
  kCFNumberSInt8Type = 1,
  kCFNumberSInt16Type = 2,
  kCFNumberSInt32Type = 3,
  kCFNumberSInt64Type = 4,
  kCFNumberFloat32Type = 5,
  kCFNumberFloat64Type = 6,
  kCFNumberIntType = 9,
  kCFNumberDoubleType = 13,
} CFNumberType;

typedef struct CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct CFDictionaryValueCallBacks CFDictionaryValueCallBacks;

#pragma clang assume_nonnull begin

CF_EXPORT const CFAllocatorRef _Nullable kCFAllocatorDefault;
CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;
CF_EXPORT const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
CF_EXPORT const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

CF_EXPORT CFTypeRef CFRetain(CFTypeRef object);
CF_EXPORT void CFRelease(CFTypeRef object);
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef object);
CF_EXPORT Boolean CFEqual(CFTypeRef one, CFTypeRef other);
CF_EXPORT CFHashCode CFHash(CFTypeRef object);

CF_EXPORT CFTypeID CFStringGetTypeID(void);
CF_EXPORT CFIndex CFStringGetLength(CFStringRef string);
CF_EXPORT void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);

CF_EXPORT CFTypeID CFNumberGetTypeID(void);
CF_EXPORT Boolean CFNumberIsFloatType(CFNumberRef number);
CF_EXPORT Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
CF_EXPORT const void* _Nullable CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);
CF_EXPORT CFDictionaryRef _Nullable CFDictionaryCreate(CFAllocatorRef _Nullable allocator, const void* _Nullable* _Nullable keys,
                                                       const void* _Nullable* _Nullable values, CFIndex count,
                                                       const CFDictionaryKeyCallBacks* _Nullable keyCallBacks,
                                                       const CFDictionaryValueCallBacks* _Nullable valueCallBacks) CF_RETURNS_RETAINED;
CF_EXPORT const void* _Nullable CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);

#pragma clang assume_nonnull end

#if defined(__APPLE__)
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
#else
/// The one immortal string of that text; the tests supply it where the compiler makes no constant strings.
CF_EXPORT CFStringRef constantStringForTests(const char* text);
#define CFSTR(text) constantStringForTests("" text "")
#endif
