// How a stored setting reads as a truth value or a number, whatever type it was stored with.
#include "platform/setting_value.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

namespace tilora {
namespace {

std::string_view withoutLeadingWhiteSpace(std::string_view text) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  std::size_t start = 0;
  for (std::size_t next = 0; next < text.size(); start = next) {
    UChar32 character = 0;
    U8_NEXT(bytes, next, text.size(), character);
    if (character < 0 || u_isUWhiteSpace(character) == 0) break;
  }
  return text.substr(start);
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

std::size_t digitsAt(std::string_view text, std::size_t start) {
  std::size_t end = start;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - start;
}

/// The unsigned decimal number that `text` begins with: digits with at most one point, then perhaps an exponent. Empty when there is none.
std::string_view decimalPrefix(std::string_view text) {
  const std::size_t whole = digitsAt(text, 0);
  std::size_t end = whole;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = digitsAt(text, end + 1);
    if (whole + fraction == 0) return {};
    end += 1 + fraction;
  }
  if (end == 0) return {};
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    std::size_t digits = end + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
    if (const std::size_t count = digitsAt(text, digits); count > 0) end = digits + count;
  }
  return text.substr(0, end);
}

/// What a number that no double can hold reads as: infinity when it is too large, 0 when it is too small.
double outOfRange(std::string_view number) {
  const std::size_t exponent = number.find_first_of("eE");
  const bool isSmall =
      exponent != std::string_view::npos ? number[exponent + 1] == '-' : number.find_first_of("123456789.") == number.find('.');
  return isSmall ? 0 : std::numeric_limits<double>::infinity();
}

double numberAtStartOf(std::string_view text) {
  text = withoutLeadingWhiteSpace(text);
  const bool isNegative = !text.empty() && text.front() == '-';
  if (isNegative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  const std::string_view number = decimalPrefix(text);
  if (number.empty()) return 0;
  double value = 0;
  // Not every standard library converts a double from characters without a stream.
  std::istringstream stream{std::string(number)};
  stream.imbue(std::locale::classic());
  if (!(stream >> value)) value = outOfRange(number);
  return isNegative ? -value : value;
}

bool isTrueText(std::string_view text) {
  text = withoutLeadingWhiteSpace(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

bool readAsBool(const SettingValue& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return *truth;
  if (const auto* number = std::get_if<double>(&value)) return *number != 0;
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr && isTrueText(*text);
}

double readAsNumber(const SettingValue& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1 : 0;
  if (const auto* number = std::get_if<double>(&value)) return *number;
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? numberAtStartOf(*text) : 0;
}

}  // namespace tilora
