// How a key combination is shown.
#pragma once

#include <cstdint>
#include <string>

#include "shortcuts/shortcut_binding.h"

namespace tilora {

/// The set modifiers in the order Ctrl, Option, Shift, Cmd, each followed by "+"; empty without modifiers.
std::string modifierText(std::uint32_t modifiers);

/// What is printed on the key of an ANSI keyboard, or "Key " and the code for a key without a name.
std::string keyName(std::uint32_t keyCode);

/// "Option+Shift+Space" for instance.
std::string bindingText(const ShortcutBinding& binding);

}  // namespace tilora
