// Core Foundation values as values of the program.
#include "platform/macos/cf_values.h"

#include <vector>

#include "platform/macos/utf16.h"

namespace tilora::macos {
namespace {

template <class Ref>
Ref as(CFTypeRef object, CFTypeID type) {
  return object && CFGetTypeID(object) == type ? static_cast<Ref>(object) : nullptr;
}

}  // namespace

std::string utf8Text(CFStringRef string) {
  const CFIndex length = CFStringGetLength(string);
  std::vector<UniChar> units(static_cast<std::size_t>(length));
  CFStringGetCharacters(string, {0, length}, units.data());
  return utf8FromUtf16(units);
}

Number numberOf(CFNumberRef number) {
  if (CFNumberIsFloatType(number)) {
    double value = 0;
    CFNumberGetValue(number, kCFNumberFloat64Type, &value);
    return Number(value);
  }
  std::int64_t value = 0;
  CFNumberGetValue(number, kCFNumberSInt64Type, &value);
  return Number(value);
}

CFStringRef asString(CFTypeRef object) { return as<CFStringRef>(object, CFStringGetTypeID()); }
CFNumberRef asNumber(CFTypeRef object) { return as<CFNumberRef>(object, CFNumberGetTypeID()); }
CFBooleanRef asBoolean(CFTypeRef object) { return as<CFBooleanRef>(object, CFBooleanGetTypeID()); }
CFArrayRef asArray(CFTypeRef object) { return as<CFArrayRef>(object, CFArrayGetTypeID()); }
CFDictionaryRef asDictionary(CFTypeRef object) { return as<CFDictionaryRef>(object, CFDictionaryGetTypeID()); }

}  // namespace tilora::macos
