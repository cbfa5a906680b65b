// System-wide key combinations.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/subscription.h"

namespace tilora {

/// Names one registration until it is given back.
enum class HotKeyReference : std::uint64_t {};

class HotKeys {
 public:
  virtual ~HotKeys() = default;

  /// Calls `handler` with the id of each registered combination that is pressed. One handler at a time; nothing when it could not be
  /// installed.
  virtual std::optional<Subscription> installHandler(std::function<void(std::uint32_t id)> handler) = 0;
  /// Takes a combination for this process. `keyCode` is a macOS virtual key code, which names a position on the keyboard; `modifiers` is
  /// the mask of Carbon's Events.h (command 0x100, shift 0x200, option 0x800, control 0x1000). Nothing when it cannot be had.
  virtual std::optional<HotKeyReference> registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) = 0;
  /// Gives a combination back.
  virtual void unregisterHotKey(HotKeyReference reference) = 0;
};

}  // namespace tilora
