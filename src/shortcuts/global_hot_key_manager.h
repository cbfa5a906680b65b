// The system-wide key combinations of this process and what each calls.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/subscription.h"

namespace tilora {

/// Owns the hot-key handler and every registration; destroying it gives all of them back. Main thread only.
class GlobalHotKeyManager {
 public:
  using Action = std::function<void()>;

  /// Installs the handler; whether that worked is not checked. `hotKeys` must outlive the manager.
  explicit GlobalHotKeyManager(HotKeys& hotKeys);
  GlobalHotKeyManager(const GlobalHotKeyManager&) = delete;
  GlobalHotKeyManager& operator=(const GlobalHotKeyManager&) = delete;
  ~GlobalHotKeyManager();

  /// Takes a combination and calls `action` each time it is pressed, in place of any action under that id. False, and nothing is changed,
  /// when the combination cannot be had.
  bool registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers, Action action);
  /// Gives every combination back.
  void unregisterAll();

 private:
  void handle(std::uint32_t id);

  HotKeys& hotKeys_;
  std::optional<Subscription> eventHandlerRef_;
  std::vector<HotKeyReference> hotKeyRefs_;
  std::unordered_map<std::uint32_t, Action> actions_;
};

}  // namespace tilora
