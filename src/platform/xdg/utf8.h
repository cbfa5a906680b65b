// Telling text from other bytes.
#pragma once

#include <string_view>

namespace tilora::xdg {

/// Whether the bytes are UTF-8 from the first to the last.
bool isUtf8(std::string_view bytes);

}  // namespace tilora::xdg
