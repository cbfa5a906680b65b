// Text by the rules of Unicode; plain ASCII goes a short way.
#include "windows/unicode_text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>

namespace tilora {
namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return isAscii(c); });
}

char lowerCasedAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

bool isAsciiWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isWhiteSpace(UChar32 character) { return character >= 0 && u_isUWhiteSpace(character) != 0; }

std::string_view trimmedOfAscii(std::string_view text) {
  while (!text.empty() && isAsciiWhiteSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isAsciiWhiteSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view trimmedOfUnicode(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalUTextPointer characters(utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
  if (U_FAILURE(status)) return text;
  std::int64_t begin = 0;
  while (isWhiteSpace(utext_next32(characters.getAlias()))) begin = utext_getNativeIndex(characters.getAlias());
  auto end = static_cast<std::int64_t>(text.size());
  utext_setNativeIndex(characters.getAlias(), end);
  while (end > begin && isWhiteSpace(utext_previous32(characters.getAlias()))) end = utext_getNativeIndex(characters.getAlias());
  return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

icu::UnicodeString unicode(std::string_view text) {
  return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  const auto rest = trimmedOfAscii(text);
  if (rest.empty() || (isAscii(rest.front()) && isAscii(rest.back()))) return rest;
  return trimmedOfUnicode(rest);
}

std::string lowerCased(std::string_view text) {
  std::string result;
  appendLowerCased(result, text);
  return result;
}

void appendLowerCased(std::string& result, std::string_view text) {
  if (!isAscii(text)) {
    unicode(text).toLower(icu::Locale::getRoot()).toUTF8String(result);
    return;
  }
  const std::size_t before = result.size();
  result += text;
  std::transform(text.begin(), text.end(), result.begin() + static_cast<std::ptrdiff_t>(before), lowerCasedAscii);
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return unicode(text).foldCase().indexOf(unicode(part).foldCase()) >= 0;
}

}  // namespace tilora
