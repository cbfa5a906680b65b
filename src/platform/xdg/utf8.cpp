// Checking bytes for being UTF-8.
#include "platform/xdg/utf8.h"

#include <unicode/utf8.h>

#include <cstdint>

namespace tilora::xdg {

bool isUtf8(std::string_view bytes) {
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t next = 0; next < bytes.size();) {
    UChar32 character = 0;
    U8_NEXT(data, next, bytes.size(), character);
    if (character < 0) return false;
  }
  return true;
}

}  // namespace tilora::xdg
