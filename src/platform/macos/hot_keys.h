// System-wide key combinations through Carbon events.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "platform/hot_keys.h"

namespace tilora::macos {

/// What the hot keys of this program carry in every event: 'SLDW'.
inline constexpr OSType hotKeySignature = 0x534C4457;

/// Registers with the dispatcher of events, so that a press arrives whichever program is active.
class CarbonHotKeys final : public HotKeys {
 public:
  /// Is shown each press before the handler; true: the press is taken, and the handler is not called.
  using Interceptor = std::function<bool(std::uint32_t keyCode, std::uint32_t modifiers)>;

  explicit CarbonHotKeys(Interceptor interceptor = {}) : interceptor_(std::move(interceptor)) {}
  CarbonHotKeys(const CarbonHotKeys&) = delete;
  CarbonHotKeys& operator=(const CarbonHotKeys&) = delete;
  /// Gives back what is still registered.
  ~CarbonHotKeys() override;

  std::optional<Subscription> installHandler(std::function<void(std::uint32_t id)> handler) override;
  std::optional<HotKeyReference> registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) override;
  void unregisterHotKey(HotKeyReference reference) override;

 private:
  struct Registration {
    EventHotKeyRef ref;
    std::uint32_t id;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
  };

  /// The user data of an installed handler.
  struct Installation {
    CarbonHotKeys& hotKeys;
    std::function<void(std::uint32_t id)> handler;
    EventHandlerRef ref = nullptr;
  };

  static OSStatus received(EventHandlerCallRef call, EventRef event, void* userData);
  bool isIntercepted(std::uint32_t id) const;

  Interceptor interceptor_;
  std::map<HotKeyReference, Registration> registrations_;
  std::uint64_t lastReference_ = 0;
};

}  // namespace tilora::macos
