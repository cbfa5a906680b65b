// Core Foundation values as values of the program.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/accessibility.h"

namespace tilora::macos {

/// The text as UTF-8, whole, whatever characters it has; half a surrogate pair becomes U+FFFD.
std::string utf8Text(CFStringRef string);

/// A CFNumber as it is stored: floating-point numbers as doubles, all others as whole numbers.
Number numberOf(CFNumberRef number);

/// The object as the type that it must be; null when it is null or of another type. Borrowed like the argument.
CFStringRef asString(CFTypeRef object);
CFNumberRef asNumber(CFTypeRef object);
CFBooleanRef asBoolean(CFTypeRef object);
CFArrayRef asArray(CFTypeRef object);
CFDictionaryRef asDictionary(CFTypeRef object);

}  // namespace tilora::macos
