// The four commands and the key combinations that call them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tilora {

/// The commands on the focused window.
enum class ShortcutAction : std::uint8_t { moveLeft, moveRight, centerOrFullscreen, floatCenter };

/// All actions in their order.
inline constexpr std::array<ShortcutAction, 4> allShortcutActions = {ShortcutAction::moveLeft, ShortcutAction::moveRight,
                                                                     ShortcutAction::centerOrFullscreen, ShortcutAction::floatCenter};

/// The name of an action, "moveLeft" for instance.
std::string_view id(ShortcutAction action);

/// The action of exactly that name, or nothing.
std::optional<ShortcutAction> shortcutActionNamed(std::string_view id);

/// The bits of a modifier mask (Carbon's Events.h).
namespace modifier {
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;
}  // namespace modifier

/// One key combination.
struct ShortcutBinding {
  /// A macOS virtual key code, which names a position on the keyboard.
  std::uint32_t keyCode = 0;
  /// A mask of the bits above.
  std::uint32_t modifiers = 0;

  bool operator==(const ShortcutBinding&) const = default;
};

/// The combination of each action. The initial values are the defaults.
struct ShortcutBindings {
  ShortcutBinding moveLeft = {33, modifier::optionKey | modifier::shiftKey};
  ShortcutBinding moveRight = {30, modifier::optionKey | modifier::shiftKey};
  ShortcutBinding centerOrFullscreen = {49, modifier::optionKey | modifier::shiftKey};
  ShortcutBinding floatCenter = {38, modifier::optionKey | modifier::shiftKey};

  const ShortcutBinding& operator[](ShortcutAction action) const;
  ShortcutBinding& operator[](ShortcutAction action);

  bool operator==(const ShortcutBindings&) const = default;
};

/// Whether an action other than `excluded` already has exactly this combination.
bool isBindingInUse(const ShortcutBindings& bindings, const ShortcutBinding& binding, ShortcutAction excluded);

/// The modifier mask of a keyboard event's flags (NSEventModifierFlags). Caps Lock and every other flag are dropped.
std::uint32_t modifierMask(std::uint64_t eventFlags);

}  // namespace tilora
