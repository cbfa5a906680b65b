// The grammar of RFC 3986, as far as it tells an address from something else.
#include "updater/address.h"

#include <algorithm>
#include <cstddef>

namespace tilora::updater {
namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr std::string_view unreservedMarks = "-._~";
constexpr std::string_view subDelimiters = "!$&'()*+,;=";

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

/// Whether `c` may stand in every part that is not a scheme.
bool isPlain(char c) {
  return isLetter(c) || isDigit(c) || unreservedMarks.find(c) != std::string_view::npos || subDelimiters.find(c) != std::string_view::npos;
}

bool isEncodedByte(std::string_view text) { return text.size() >= 3 && text[0] == '%' && isHexDigit(text[1]) && isHexDigit(text[2]); }

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; });
}

/// A name or an address of the internet protocol, version 4.
bool isNamedHost(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!isPlain(text[i]) && !isEncodedByte(text.substr(i))) return false;
  }
  return true;
}

/// What stands between the brackets of an address of a later version of the internet protocol.
bool isBracketedHost(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return isHexDigit(c) || c == ':' || c == '.'; });
}

bool isPort(std::string_view text) { return std::all_of(text.begin(), text.end(), isDigit); }

bool isHostAndPort(std::string_view text) {
  if (text.substr(0, 1) == "[") {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos || !isBracketedHost(text.substr(1, end - 1))) return false;
    const std::string_view rest = text.substr(end + 1);
    return rest.empty() || (rest.front() == ':' && isPort(rest.substr(1)));
  }
  const std::size_t colon = std::min(text.find(':'), text.size());
  return isNamedHost(text.substr(0, colon)) && (colon == text.size() || isPort(text.substr(colon + 1)));
}

/// `text` with every byte encoded that is neither plain, nor encoded already, nor one of `allowed`.
std::string encoded(std::string_view text, std::string_view allowed) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isPlain(text[i]) || allowed.find(text[i]) != std::string_view::npos || isEncodedByte(text.substr(i))) {
      result += text[i];
      continue;
    }
    const auto byte = static_cast<unsigned char>(text[i]);
    result += '%';
    result += hexDigits[byte >> 4U];
    result += hexDigits[byte & 0xFU];
  }
  return result;
}

/// Cuts the front of `text` off before the first of `ends`.
std::string_view cut(std::string_view& text, std::string_view ends) {
  const std::string_view front = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(front.size());
  return front;
}

}  // namespace

std::optional<std::string> encodedAddress(std::string_view text) {
  if (text.empty()) return std::nullopt;
  std::string result;
  std::string_view rest = text;
  if (const std::string_view scheme = cut(rest, ":/?#"); rest.substr(0, 1) == ":") {
    if (!isScheme(scheme)) return std::nullopt;
    result += scheme;
    result += ':';
    rest.remove_prefix(1);
  } else {
    rest = text;
  }
  if (rest.substr(0, 2) == "//") {
    rest.remove_prefix(2);
    const std::string_view authority = cut(rest, "/?#");
    const std::size_t at = authority.rfind('@');
    const std::size_t host = at == std::string_view::npos ? 0 : at + 1;
    if (!isHostAndPort(authority.substr(host))) return std::nullopt;
    result += "//" + encoded(authority.substr(0, host), ":@");
    result += authority.substr(host);
  }
  result += encoded(cut(rest, "?#"), ":@/");
  result += encoded(cut(rest, "#"), ":@/?");
  if (!rest.empty()) result += "#" + encoded(rest.substr(1), ":@/?");
  return result;
}

}  // namespace tilora::updater
