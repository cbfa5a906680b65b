// Core Graphics: what the macOS desktop uses of its public interface, declared from its documentation.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

struct CGPoint {
  CGFloat x;
  CGFloat y;
};
typedef struct CGPoint CGPoint;

struct CGSize {
  CGFloat width;
  CGFloat height;
};
typedef struct CGSize CGSize;

struct CGRect {
  CGPoint origin;
  CGSize size;
};
typedef struct CGRect CGRect;

typedef uint32_t CGWindowID;

typedef uint32_t CGWindowListOption;
enum : CGWindowListOption {
  kCGWindowListOptionAll = 0,
  kCGWindowListOptionOnScreenOnly = 1 << 0,
  kCGWindowListOptionOnScreenAboveWindow = 1 << 1,
  kCGWindowListOptionOnScreenBelowWindow = 1 << 2,
  kCGWindowListOptionIncludingWindow = 1 << 3,
  kCGWindowListExcludeDesktopElements = 1 << 4,
};

#pragma clang assume_nonnull begin

CF_EXPORT const CFStringRef kCGWindowOwnerPID;
CF_EXPORT const CFStringRef kCGWindowBounds;

CF_EXPORT CFArrayRef _Nullable CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow) CF_RETURNS_RETAINED;
CF_EXPORT bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef _Nullable dictionary, CGRect* _Nullable rect);

#pragma clang assume_nonnull end
