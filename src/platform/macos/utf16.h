// The text of the system's strings.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tilora::macos {

/// UTF-16 code units as UTF-8; half a surrogate pair becomes U+FFFD.
std::string utf8FromUtf16(const std::vector<std::uint16_t>& units);

}  // namespace tilora::macos
