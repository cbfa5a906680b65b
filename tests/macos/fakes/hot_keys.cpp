// Carbon events over the hot keys of the fake system's world.
#include <Carbon/Carbon.h>

#include <algorithm>
#include <cstring>
#include <list>

#include "fakes/fake_system.h"

struct OpaqueEventRef {
  EventHotKeyID id;
  OSStatus status;
};

struct OpaqueEventHotKeyRef {
  std::optional<tilora::HotKeyReference> reference;
};

struct OpaqueEventHandlerRef {
  EventHandlerUPP handler;
  void* userData;
  tilora::Subscription presses;
};

struct OpaqueEventTargetRef {
  bool isDispatcher;
};

namespace tilora::macos::fake {
namespace {

constexpr OSStatus paramErr = -50;
constexpr OSStatus eventParameterNotFoundErr = -9870;

std::list<OpaqueEventHotKeyRef> hotKeys;
std::list<OpaqueEventHandlerRef> handlers;
std::optional<OSStatus> lastStatus;
/// The signature of each id that was registered last, as it comes back in events.
std::map<std::uint32_t, OSType> signatures;

void send(const OpaqueEventHandlerRef& handler, OpaqueEventRef* event) { lastStatus = handler.handler(nullptr, event, handler.userData); }

void deliver(EventHandlerRef handler, std::uint32_t id) {
  OpaqueEventRef event{{signatures[id], id}, noErr};
  send(*handler, &event);
}

HotKeys& hotKeysOfWorld() { return FakeSystem::current().world().hotKeys(); }

template <class Item>
typename std::list<Item>::iterator find(std::list<Item>& items, const Item* item) {
  return std::find_if(items.begin(), items.end(), [&](const Item& other) { return &other == item; });
}

}  // namespace

std::size_t registeredHotKeys() { return hotKeys.size(); }
std::size_t installedHandlers() { return handlers.size(); }
std::optional<OSStatus> lastHandlerStatus() { return lastStatus; }

void sendHotKeyEvent(std::uint32_t id, OSType signature, OSStatus status, bool withEvent) {
  OpaqueEventRef event{{signature, id}, status};
  for (auto& handler : handlers) send(handler, withEvent ? &event : nullptr);
}

}  // namespace tilora::macos::fake

using namespace tilora::macos::fake;

extern "C" {

EventTargetRef GetEventDispatcherTarget() {
  static OpaqueEventTargetRef target{true};
  return &target;
}

EventTargetRef GetApplicationEventTarget() {
  static OpaqueEventTargetRef target{false};
  return &target;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count, const EventTypeSpec* types, void* userData,
                             EventHandlerRef* handlerRef) {
  auto& system = FakeSystem::current();
  if (system.handlerInstallation != noErr) return system.handlerInstallation;
  const bool isForPresses = count == 1 && types->eventClass == kEventClassKeyboard && types->eventKind == kEventHotKeyPressed;
  if (!target->isDispatcher || !isForPresses) return paramErr;
  auto& installed = handlers.emplace_back(OpaqueEventHandlerRef{handler, userData, {}});
  auto presses = hotKeysOfWorld().installHandler([&installed](std::uint32_t id) { deliver(&installed, id); });
  if (presses) installed.presses = std::move(*presses);
  *handlerRef = &installed;
  return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef handlerRef) {
  const auto found = find(handlers, handlerRef);
  if (found == handlers.end()) crash("an event handler was removed that is not installed");
  handlers.erase(found);
  return noErr;
}

OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType* /*actualType*/, ByteCount size,
                           ByteCount* /*actualSize*/, void* data) {
  if (event->status != noErr) return event->status;
  if (name != kEventParamDirectObject || type != typeEventHotKeyID || size != sizeof(event->id)) return eventParameterNotFoundErr;
  std::memcpy(data, &event->id, sizeof(event->id));
  return noErr;
}

OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target, OptionBits options,
                             EventHotKeyRef* hotKeyRef) {
  auto& system = FakeSystem::current();
  system.hotKeyCalls.push_back({id.signature, id.id, keyCode, modifiers, options});
  if (!target->isDispatcher) return paramErr;
  const auto answer = system.hotKeyAnswer;
  if (answer && !answer->makesReference) return answer->status;
  const auto reference = hotKeysOfWorld().registerHotKey(id.id, keyCode, modifiers);
  if (!reference) return eventHotKeyExistsErr;
  signatures[id.id] = id.signature;
  *hotKeyRef = &hotKeys.emplace_back(OpaqueEventHotKeyRef{reference});
  return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKeyRef) {
  const auto found = find(hotKeys, hotKeyRef);
  if (found == hotKeys.end()) crash("a hot key was unregistered that is not registered");
  if (found->reference) hotKeysOfWorld().unregisterHotKey(*found->reference);
  hotKeys.erase(found);
  return noErr;
}

}  // extern "C"
