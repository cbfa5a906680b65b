// System-wide key combinations through Carbon events.
#include "platform/macos/hot_keys.h"

#include <algorithm>
#include <utility>

namespace tilora::macos {

CarbonHotKeys::~CarbonHotKeys() {
  for (const auto& [reference, registration] : registrations_) UnregisterEventHotKey(registration.ref);
}

std::optional<Subscription> CarbonHotKeys::installHandler(std::function<void(std::uint32_t id)> handler) {
  auto installation = std::make_shared<Installation>(Installation{*this, std::move(handler)});
  const EventTypeSpec pressed{kEventClassKeyboard, kEventHotKeyPressed};
  const OSStatus status = InstallEventHandler(GetEventDispatcherTarget(), &received, 1, &pressed, installation.get(), &installation->ref);
  if (status != noErr || !installation->ref) return std::nullopt;
  return Subscription([installation] { RemoveEventHandler(installation->ref); });
}

OSStatus CarbonHotKeys::received(EventHandlerCallRef /*call*/, EventRef event, void* userData) {
  if (!event || !userData) return noErr;
  EventHotKeyID pressed{};
  const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof(pressed), nullptr, &pressed);
  if (status != noErr) return noErr;
  const auto& installation = *static_cast<const Installation*>(userData);
  if (installation.hotKeys.isIntercepted(pressed.id)) return noErr;
  const auto handler = installation.handler;  // it may end the installation
  handler(pressed.id);
  return noErr;
}

bool CarbonHotKeys::isIntercepted(std::uint32_t id) const {
  if (!interceptor_) return false;
  const auto found = std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& entry) { return entry.second.id == id; });
  return found != registrations_.end() && interceptor_(found->second.keyCode, found->second.modifiers);
}

std::optional<HotKeyReference> CarbonHotKeys::registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) {
  EventHotKeyRef ref = nullptr;
  const OSStatus status =
      RegisterEventHotKey(keyCode, modifiers, {hotKeySignature, id}, GetEventDispatcherTarget(), kEventHotKeyNoOptions, &ref);
  if (status != noErr || !ref) return std::nullopt;
  const HotKeyReference reference{++lastReference_};
  registrations_.emplace(reference, Registration{ref, id, keyCode, modifiers});
  return reference;
}

void CarbonHotKeys::unregisterHotKey(HotKeyReference reference) {
  const auto found = registrations_.find(reference);
  if (found == registrations_.end()) return;
  EventHotKeyRef ref = found->second.ref;
  registrations_.erase(found);
  UnregisterEventHotKey(ref);
}

}  // namespace tilora::macos
