// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace tilora::fuzz {

/// Ends the process, which is what a finding is, unless it holds.
inline void require(bool holds) {
  if (!holds) std::abort();
}

/// How many bytes continue the character that begins with `first`; -1: none begins with it.
inline int continuation(unsigned char first) {
  if (first < 0x80) return 0;
  if (first >= 0xC2 && first < 0xE0) return 1;
  if (first >= 0xE0 && first < 0xF0) return 2;
  return first >= 0xF0 && first < 0xF5 ? 3 : -1;
}

/// Unicode, table 3-7: neither longer forms than needed, nor surrogates, nor characters beyond the last.
inline bool isUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const int length = continuation(first);
    if (length < 0) return false;
    for (int i = 0; i < length; ++i) {
      if (++at >= text.size()) return false;
      const auto next = static_cast<unsigned char>(text[at]);
      if (next < 0x80 || next > 0xBF) return false;
      if (i > 0) continue;
      if ((first == 0xE0 && next < 0xA0) || (first == 0xED && next > 0x9F)) return false;
      if ((first == 0xF0 && next < 0x90) || (first == 0xF4 && next > 0x8F)) return false;
    }
  }
  return true;
}

}  // namespace tilora::fuzz
