// The system-wide key combinations of this process and what each calls.
#include "shortcuts/global_hot_key_manager.h"

#include <utility>

namespace tilora {

GlobalHotKeyManager::GlobalHotKeyManager(HotKeys& hotKeys) : hotKeys_(hotKeys) {
  eventHandlerRef_ = hotKeys_.installHandler([this](std::uint32_t id) { handle(id); });
}

GlobalHotKeyManager::~GlobalHotKeyManager() {
  unregisterAll();
  eventHandlerRef_.reset();
}

bool GlobalHotKeyManager::registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers, Action action) {
  const auto reference = hotKeys_.registerHotKey(id, keyCode, modifiers);
  if (!reference) return false;
  actions_.insert_or_assign(id, std::move(action));
  hotKeyRefs_.push_back(*reference);
  return true;
}

void GlobalHotKeyManager::unregisterAll() {
  for (const auto reference : hotKeyRefs_) hotKeys_.unregisterHotKey(reference);
  hotKeyRefs_.clear();
  actions_.clear();
}

void GlobalHotKeyManager::handle(std::uint32_t id) {
  const auto entry = actions_.find(id);
  if (entry == actions_.end()) return;
  const Action action = entry->second;  // it may register anew, which drops the entry
  action();
}

}  // namespace tilora
