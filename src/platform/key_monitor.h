// Key presses that reach the program's own windows.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/subscription.h"

namespace tilora {

/// One key-down event.
struct KeyEvent {
  /// A macOS virtual key code, which names a position on the keyboard.
  std::uint32_t keyCode = 0;
  /// The event's modifier flags (NSEventModifierFlags): Caps Lock is bit 16, Shift 17, Control 18, Option 19, Command 20.
  std::uint64_t flags = 0;
};

class KeyMonitor {
 public:
  virtual ~KeyMonitor() = default;

  /// Shows `handler` every key-down before the program's own windows see it; it answers whether the event is swallowed. While a monitor is
  /// installed and the program has the keyboard, the program's system-wide combinations reach it too and do not fire. What is pressed in
  /// another program never reaches it. Nothing when it cannot be installed.
  virtual std::optional<Subscription> install(std::function<bool(const KeyEvent&)> handler) = 0;
};

}  // namespace tilora
