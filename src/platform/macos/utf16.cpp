// The text of the system's strings.
#include "platform/macos/utf16.h"

namespace tilora::macos {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHighSurrogate(std::uint16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(std::uint16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The character that begins at `index`, which moves behind it.
char32_t nextCharacter(const std::vector<std::uint16_t>& units, std::size_t& index) {
  const std::uint16_t unit = units[index++];
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

}  // namespace

std::string utf8FromUtf16(const std::vector<std::uint16_t>& units) {
  std::string text;
  text.reserve(units.size());
  for (std::size_t index = 0; index < units.size();) append(text, nextCharacter(units, index));
  return text;
}

}  // namespace tilora::macos
