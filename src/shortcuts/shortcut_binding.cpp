// The four commands and the key combinations that call them.
#include "shortcuts/shortcut_binding.h"

#include <algorithm>

namespace tilora {
namespace {

constexpr std::array<std::string_view, allShortcutActions.size()> ids = {"moveLeft", "moveRight", "centerOrFullscreen", "floatCenter"};

constexpr std::array<ShortcutBinding ShortcutBindings::*, allShortcutActions.size()> fields = {
    &ShortcutBindings::moveLeft, &ShortcutBindings::moveRight, &ShortcutBindings::centerOrFullscreen, &ShortcutBindings::floatCenter};

struct FlagMask {
  std::uint64_t flag;
  std::uint32_t mask;
};

constexpr std::array<FlagMask, 4> flagMasks = {{
    {std::uint64_t{1} << 17, modifier::shiftKey},
    {std::uint64_t{1} << 18, modifier::controlKey},
    {std::uint64_t{1} << 19, modifier::optionKey},
    {std::uint64_t{1} << 20, modifier::cmdKey},
}};

}  // namespace

std::string_view id(ShortcutAction action) { return ids[static_cast<std::size_t>(action)]; }

std::optional<ShortcutAction> shortcutActionNamed(std::string_view id) {
  const auto found = std::find(ids.begin(), ids.end(), id);
  if (found == ids.end()) return std::nullopt;
  return static_cast<ShortcutAction>(found - ids.begin());
}

const ShortcutBinding& ShortcutBindings::operator[](ShortcutAction action) const { return this->*fields[static_cast<std::size_t>(action)]; }

ShortcutBinding& ShortcutBindings::operator[](ShortcutAction action) { return this->*fields[static_cast<std::size_t>(action)]; }

bool isBindingInUse(const ShortcutBindings& bindings, const ShortcutBinding& binding, ShortcutAction excluded) {
  return std::any_of(allShortcutActions.begin(), allShortcutActions.end(),
                     [&](ShortcutAction action) { return action != excluded && bindings[action] == binding; });
}

std::uint32_t modifierMask(std::uint64_t eventFlags) {
  std::uint32_t mask = 0;
  for (const auto& [flag, bit] : flagMasks) {
    if ((eventFlags & flag) != 0) mask |= bit;
  }
  return mask;
}

}  // namespace tilora
