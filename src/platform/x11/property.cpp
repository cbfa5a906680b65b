// Reading property replies.
#include "platform/x11/property.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstring>

namespace tilora::x11 {
namespace {

std::string fromLatin1(const std::string& bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x80) {
      text.push_back(byte);
    } else {
      text.push_back(static_cast<char>(0xC0 | (code >> 6)));
      text.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
  }
  return text;
}

}  // namespace

std::string repairedUtf8(const std::string& bytes) {
  if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) return bytes;
  std::string text;
  icu::UnicodeString::fromUTF8(bytes).toUTF8String(text);
  return text;
}

std::vector<std::uint32_t> Property::items(xcb_atom_t type) const {
  if (!isPresent() || reply_->format != 32 || reply_->type != type) return {};
  const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply_.get())) / sizeof(std::uint32_t);
  std::vector<std::uint32_t> result(count);
  if (count > 0) std::memcpy(result.data(), xcb_get_property_value(reply_.get()), count * sizeof(std::uint32_t));
  return result;
}

std::optional<std::uint32_t> Property::item(xcb_atom_t type) const {
  const auto all = items(type);
  if (all.empty()) return std::nullopt;
  return all.front();
}

std::string Property::bytes() const {
  if (!isPresent() || reply_->format != 8) return {};
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply_.get()));
  return {static_cast<const char*>(xcb_get_property_value(reply_.get())), length};
}

std::optional<std::string> Property::text(const Atoms& atoms) const {
  const auto all = texts(atoms);
  if (all.empty() || all.front().empty()) return std::nullopt;
  return all.front();
}

std::vector<std::string> Property::texts(const Atoms& atoms) const {
  const std::string all = bytes();
  const bool isUtf8 = isPresent() && reply_->type == atoms.UTF8_STRING;
  std::vector<std::string> result;
  for (std::size_t begin = 0; begin < all.size();) {
    const auto end = std::min(all.find('\0', begin), all.size());
    const std::string part = all.substr(begin, end - begin);
    result.push_back(isUtf8 ? repairedUtf8(part) : fromLatin1(part));
    begin = end + 1;
  }
  return result;
}

}  // namespace tilora::x11
