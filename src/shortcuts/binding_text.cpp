// How a key combination is shown.
#include "shortcuts/binding_text.h"

#include <array>
#include <string_view>

namespace tilora {
namespace {

struct ModifierName {
  std::uint32_t bit;
  std::string_view text;
};

constexpr std::array<ModifierName, 4> modifierNames = {{
    {modifier::controlKey, "Ctrl+"},
    {modifier::optionKey, "Option+"},
    {modifier::shiftKey, "Shift+"},
    {modifier::cmdKey, "Cmd+"},
}};

/// By key code; empty for a code without a name.
constexpr std::array<std::string_view, 54> keyNames = {
    "A",      "S", "D", "F", "H", "G", "Z",  "X", "C", "V", "",  "B", "Q",   "W",     "E", "R",      "Y", "T",
    "1",      "2", "3", "4", "6", "5", "=",  "9", "7", "-", "8", "0", "]",   "O",     "U", "[",      "I", "P",
    "Return", "L", "J", "'", "K", ";", "\\", ",", "/", "N", "M", ".", "Tab", "Space", "`", "Delete", "",  "Esc",
};

std::string_view nameOf(std::uint32_t keyCode) {
  if (keyCode < keyNames.size()) return keyNames[keyCode];
  switch (keyCode) {
    case 117:
      return "Forward Delete";
    case 123:
      return "Left";
    case 124:
      return "Right";
    case 125:
      return "Down";
    case 126:
      return "Up";
    default:
      return {};
  }
}

}  // namespace

std::string modifierText(std::uint32_t modifiers) {
  std::string text;
  for (const auto& name : modifierNames) {
    if ((modifiers & name.bit) != 0) text += name.text;
  }
  return text;
}

std::string keyName(std::uint32_t keyCode) {
  const auto name = nameOf(keyCode);
  return name.empty() ? "Key " + std::to_string(keyCode) : std::string(name);
}

std::string bindingText(const ShortcutBinding& binding) { return modifierText(binding.modifiers) + keyName(binding.keyCode); }

}  // namespace tilora
