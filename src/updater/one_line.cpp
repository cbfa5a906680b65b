// Reading UTF-8 character by character.
#include "updater/one_line.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tilora::updater {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::string_view ellipsis = "\xE2\x80\xA6";

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

/// The controls of ASCII and Latin-1, the marks and embeddings of the bidirectional algorithm, and the separators of lines and paragraphs.
constexpr std::array<Range, 7> unshown = {
    {{0x00, 0x1F}, {0x7F, 0x9F}, {0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x2029}, {0x202A, 0x202E}, {0x2066, 0x2069}}};

struct Character {
  std::uint32_t code = 0;
  /// In bytes; 0 when there is no whole character.
  std::size_t length = 0;
};

/// The number of bytes that a character with this first byte has; 0 when none begins with it.
std::size_t lengthFrom(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

Character firstOf(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = lengthFrom(first);
  if (length == 0 || length > text.size()) return {};
  if (length == 1) return {first, 1};
  std::uint32_t code = first & (0x7FU >> length);
  for (const char next : text.substr(1, length - 1)) {
    const auto byte = static_cast<unsigned char>(next);
    if ((byte & 0xC0U) != 0x80U) return {};
    code = code << 6U | (byte & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < least.at(length) || code > 0x10FFFF || isSurrogate) return {};
  return {code, length};
}

bool isShown(std::uint32_t code) {
  return std::none_of(unshown.begin(), unshown.end(), [code](const Range& range) { return code >= range.first && code <= range.last; });
}

}  // namespace

std::string oneLine(std::string_view text, std::size_t mostCharacters) {
  std::string line;
  for (std::size_t count = 0; !text.empty(); ++count) {
    if (count == mostCharacters) return line.append(ellipsis);
    const Character character = firstOf(text);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    line += character.length > 0 && isShown(character.code) ? text.substr(0, length) : replacement;
    text.remove_prefix(length);
  }
  return line;
}

}  // namespace tilora::updater
