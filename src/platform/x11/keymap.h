// What the keyboard's map says: which key sits where, and which real modifiers carry Alt, Super and the locks.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/key_monitor.h"
#include "platform/x11/connection.h"

namespace tilora::x11 {

/// The XKB key name of the position that a macOS virtual key code names ("AD11" for 33); empty for a code that names no position here.
/// Names are those of the PC keyboards' keycodes files and say where a key is, whatever the layout prints on it.
std::string_view keyNameForKeyCode(std::uint32_t keyCode);

/// Whether a macOS virtual key code is that of a modifier or lock key, which makes no key-down event there.
bool isModifierKey(std::uint32_t keyCode);

/// A snapshot of the server's keyboard map. Real modifiers are masks of X core modifiers (Shift 1, Lock 2, Control 4, Mod1 8 ... Mod5 128).
class Keymap {
 public:
  /// A map without any key and without Alt, Super and Num Lock.
  Keymap() = default;

  /// Reads the map of the core keyboard with one round trip. An empty map when the server does not answer. `sequence`, when given, is set
  /// to the number of the first request sent: the snapshot covers every change that the server reported before it.
  static Keymap read(const Connection& connection, std::uint32_t* sequence = nullptr);

  /// The X keycode at the position of a macOS virtual key code; nothing when no key carries it.
  std::optional<xcb_keycode_t> keycode(std::uint32_t keyCode) const;
  /// The reverse; nothing for a key that macOS has no code for.
  std::optional<std::uint32_t> keyCode(xcb_keycode_t keycode) const;

  /// The real modifiers of a Carbon modifier mask (command 0x100, shift 0x200, option 0x800, control 0x1000). Nothing when the mask has any
  /// other bit or the keyboard has no such modifier.
  std::optional<std::uint16_t> modifiers(std::uint32_t mask) const;
  /// The four real modifiers a combination is made of, as far as the keyboard has them.
  std::uint16_t combinationModifiers() const {
    return static_cast<std::uint16_t>(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt_ | super_);
  }
  /// Every state that Caps Lock, Num Lock and Scroll Lock together can be in; begins with 0, at most 8.
  std::vector<std::uint16_t> lockStates() const;

  std::uint16_t alt() const { return alt_; }
  std::uint16_t super() const { return super_; }
  std::uint16_t numLock() const { return numLock_; }

  /// A key event of this keyboard as the recorder takes it; nothing for a key that macOS has no code for. Group bits in `state` do not
  /// matter.
  std::optional<KeyEvent> keyEvent(xcb_keycode_t keycode, std::uint16_t state) const;

  bool operator==(const Keymap&) const = default;

 private:
  static constexpr std::size_t keyCodeCount = 128;

  /// By macOS virtual key code; 0: no key.
  std::array<xcb_keycode_t, keyCodeCount> keycodes_{};
  std::uint16_t alt_ = 0;
  std::uint16_t super_ = 0;
  std::uint16_t numLock_ = 0;
  std::uint16_t scrollLock_ = 0;
};

}  // namespace tilora::x11
