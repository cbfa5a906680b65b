// The stored form of the key combinations.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shortcuts/shortcut_binding.h"

namespace tilora {

/// One JSON object with a member for each action in their order, each with "keyCode", then "modifiers". Never throws.
std::string encodeBindings(const ShortcutBindings& bindings);

/// Nothing unless `json` is one such object as a whole, with unsigned 32-bit integers. "floatCenter" alone may be missing: it is the
/// default then. Other members are passed over. Never throws.
std::optional<ShortcutBindings> decodeBindings(std::string_view json);

}  // namespace tilora
