// The accessibility interface: what the macOS desktop uses of it, declared from its documentation.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <sys/types.h>

typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement* AXUIElementRef;
typedef const struct CF_BRIDGED_TYPE(id) __AXValue* AXValueRef;

typedef enum AXError : SInt32 {
  kAXErrorSuccess = 0,
  kAXErrorFailure = -25200,
  kAXErrorIllegalArgument = -25201,
  kAXErrorInvalidUIElement = -25202,
  kAXErrorInvalidUIElementObserver = -25203,
  kAXErrorCannotComplete = -25204,
  kAXErrorAttributeUnsupported = -25205,
  kAXErrorActionUnsupported = -25206,
  kAXErrorNotificationUnsupported = -25207,
  kAXErrorNotImplemented = -25208,
  kAXErrorNotificationAlreadyRegistered = -25209,
  kAXErrorNotificationNotRegistered = -25210,
  kAXErrorAPIDisabled = -25211,
  kAXErrorNoValue = -25212,
  kAXErrorParameterizedAttributeUnsupported = -25213,
  kAXErrorNotEnoughPrecision = -25214,
} AXError;

typedef enum AXValueType : UInt32 {
  kAXValueTypeIllegal = 0,
  kAXValueTypeCGPoint = 1,
  kAXValueTypeCGSize = 2,
  kAXValueTypeCGRect = 3,
  kAXValueTypeCFRange = 4,
  kAXValueTypeAXError = 5,
} AXValueType;

#pragma clang assume_nonnull begin

CF_EXPORT const CFStringRef kAXTrustedCheckOptionPrompt;
CF_EXPORT Boolean AXIsProcessTrusted(void);
CF_EXPORT Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);

CF_EXPORT CFTypeID AXUIElementGetTypeID(void);
CF_EXPORT AXUIElementRef AXUIElementCreateApplication(pid_t pid) CF_RETURNS_RETAINED;
CF_EXPORT AXUIElementRef AXUIElementCreateSystemWide(void) CF_RETURNS_RETAINED;
CF_EXPORT AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);
CF_EXPORT AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                                CFTypeRef _Nullable* _Nonnull CF_RETURNS_RETAINED value);
CF_EXPORT AXError AXUIElementIsAttributeSettable(AXUIElementRef element, CFStringRef attribute, Boolean* settable);
CF_EXPORT AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value);

CF_EXPORT CFTypeID AXValueGetTypeID(void);
CF_EXPORT AXValueRef _Nullable AXValueCreate(AXValueType type, const void* value) CF_RETURNS_RETAINED;
CF_EXPORT AXValueType AXValueGetType(AXValueRef value);
CF_EXPORT Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

#pragma clang assume_nonnull end
