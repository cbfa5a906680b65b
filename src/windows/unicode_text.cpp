// Text by the rules of Unicode; plain ASCII goes a short way.
#include "windows/unicode_text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <cstdint>

namespace tilora {
namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char lowerCasedAscii(char c) {
  const bool isCapital = c >= 'A' && c <= 'Z';
  return static_cast<char>(c | (isCapital ? 0x20 : 0));
}

bool isVisibleAscii(char c) { return c > ' ' && c <= '~'; }

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
  if (!text.empty() && isVisibleAscii(text.front()) && isVisibleAscii(text.back())) return text;
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
  const std::size_t before = result.size();
  result += text;
  char seen = 0;
  char* const end = result.data() + result.size();
  for (char* c = result.data() + before; c != end; ++c) {
    seen = static_cast<char>(seen | *c);
    *c = lowerCasedAscii(*c);
  }
  if (isAscii(seen)) return;
  result.resize(before);
  unicode(text).toLower(icu::Locale::getRoot()).toUTF8String(result);
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return unicode(text).foldCase().indexOf(unicode(part).foldCase()) >= 0;
}

}  // namespace tilora
