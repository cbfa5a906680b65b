// Core Foundation values as values of the program.
#include "platform/macos/cf_values.h"

#include <vector>

namespace tilora::macos {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHighSurrogate(UniChar unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(UniChar unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The character that begins at `index`, which moves behind it.
char32_t nextCharacter(const std::vector<UniChar>& units, std::size_t& index) {
  const UniChar unit = units[index++];
  if (isLowSurrogate(unit)) return replacement;
  if (!isHighSurrogate(unit)) return unit;
  if (index == units.size() || !isLowSurrogate(units[index])) return replacement;
  return 0x10000 + ((unit & 0x3FFU) << 10) + (units[index++] & 0x3FFU);
}

void append(std::string& text, char32_t character) {
  const auto trailing = [&](unsigned shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    trailing(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    trailing(6);
    trailing(0);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    trailing(12);
    trailing(6);
    trailing(0);
  }
}

template <class Ref>
Ref as(CFTypeRef object, CFTypeID type) {
  return object && CFGetTypeID(object) == type ? static_cast<Ref>(object) : nullptr;
}

}  // namespace

std::string utf8Text(CFStringRef string) {
  const CFIndex length = CFStringGetLength(string);
  std::vector<UniChar> units(static_cast<std::size_t>(length));
  CFStringGetCharacters(string, {0, length}, units.data());
  std::string text;
  text.reserve(units.size());
  for (std::size_t index = 0; index < units.size();) append(text, nextCharacter(units, index));
  return text;
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
