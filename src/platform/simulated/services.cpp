// The small parts of the simulated desktop.
#include "platform/simulated/services.h"

#include <algorithm>

namespace tilora::simulated {

bool SimulatedTrust::isProcessTrusted(bool prompt) {
  report_(TrustRequested{prompt});
  return trusted;
}

std::optional<Subscription> SimulatedHotKeys::installHandler(std::function<void(std::uint32_t id)> handler) {
  handler_ = std::make_shared<std::function<void(std::uint32_t)>>(std::move(handler));
  return Subscription([installed = handler_] { *installed = nullptr; });
}

std::optional<HotKeyReference> SimulatedHotKeys::registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) {
  const Combination combination{keyCode, modifiers};
  const bool isHeld =
      std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& entry) { return entry.second.combination == combination; });
  const bool isFree = !isHeld && !taken_.contains(combination);
  report_(HotKeyRegistered{id, keyCode, modifiers, isFree});
  if (!isFree) return std::nullopt;
  const HotKeyReference reference{++lastReference_};
  registrations_.emplace(reference, Registration{id, combination});
  return reference;
}

void SimulatedHotKeys::unregisterHotKey(HotKeyReference reference) {
  const auto found = registrations_.find(reference);
  if (found == registrations_.end()) return;
  const auto id = found->second.id;
  registrations_.erase(found);
  report_(HotKeyUnregistered{id});
}

void SimulatedHotKeys::setTaken(Combination combination, bool isTaken) {
  if (isTaken) {
    taken_.insert(combination);
  } else {
    taken_.erase(combination);
  }
}

void SimulatedHotKeys::press(Combination combination) {
  const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                  [&](const auto& entry) { return entry.second.combination == combination; });
  if (found == registrations_.end() || !handler_) return;
  if (const auto handler = *handler_) handler(found->second.id);
}

std::optional<Subscription> SimulatedKeyMonitor::install(std::function<bool(const KeyEvent&)> handler) {
  const auto monitor = ++lastMonitor_;
  monitors_.emplace(monitor, std::move(handler));
  report_(KeyMonitorInstalled{});
  return Subscription([this, monitor] {
    monitors_.erase(monitor);
    report_(KeyMonitorRemoved{});
  });
}

bool SimulatedKeyMonitor::press(const KeyEvent& event) {
  const auto monitors = monitors_;
  return std::any_of(monitors.begin(), monitors.end(), [&](const auto& entry) { return entry.second(event); });
}

std::optional<std::string> SimulatedLoginItem::registerItem() {
  if (!traits.registerError) traits.status = traits.statusAfterRegister;
  report_(LoginItemRegistered{!traits.registerError.has_value()});
  return traits.registerError;
}

std::optional<std::string> SimulatedLoginItem::unregisterItem() {
  if (!traits.unregisterError) traits.status = traits.statusAfterUnregister;
  report_(LoginItemUnregistered{!traits.unregisterError.has_value()});
  return traits.unregisterError;
}

const SettingValue* SimulatedSettings::find(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? nullptr : &found->second;
}

bool SimulatedSettings::boolValue(std::string_view key) {
  const auto* value = find(key);
  return value != nullptr && readAsBool(*value);
}

double SimulatedSettings::doubleValue(std::string_view key) {
  const auto* value = find(key);
  return value != nullptr ? readAsNumber(*value) : 0;
}

std::optional<std::string> SimulatedSettings::data(std::string_view key) {
  const auto* value = find(key);
  const auto* data = value != nullptr ? std::get_if<SettingData>(value) : nullptr;
  if (data == nullptr) return std::nullopt;
  return data->bytes;
}

std::optional<std::chrono::system_clock::time_point> SimulatedSettings::date(std::string_view key) {
  const auto* value = find(key);
  const auto* date = value != nullptr ? std::get_if<SettingDate>(value) : nullptr;
  if (date == nullptr) return std::nullopt;
  return *date;
}

void SimulatedSettings::put(const std::string& key, std::optional<SettingValue> value) {
  if (value) {
    values_.insert_or_assign(key, std::move(*value));
  } else {
    values_.erase(key);
  }
}

void SimulatedSettings::write(std::string_view key, SettingValue value) {
  report_(SettingStored{std::string(key), value});
  values_.insert_or_assign(std::string(key), std::move(value));
}

}  // namespace tilora::simulated
