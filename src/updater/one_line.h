// Text of strangers, before it is shown to the user.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tilora::updater {

/// `text` on one line and as it is stored: characters that break lines, steer a terminal or turn the direction of writing, and bytes that
/// are not UTF-8, are each replaced by U+FFFD; after `mostCharacters` an ellipsis ends it.
std::string oneLine(std::string_view text, std::size_t mostCharacters);

}  // namespace tilora::updater
