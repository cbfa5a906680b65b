// The stored settings.
#include "controller/settings.h"

#include <string_view>

#include "shortcuts/binding_json.h"
#include "tiling/preferences_json.h"

namespace tilora {
namespace {

constexpr std::string_view windowPaddingKey = "Tilora.WindowPadding";
constexpr std::string_view startOnLoginKey = "Tilora.StartOnLogin";
constexpr std::string_view shortcutBindingsKey = "Tilora.ShortcutBindings";
constexpr std::string_view placementPreferencesKey = "Tilora.AppPlacementPreferences";

constexpr double defaultWindowPadding = 12.0;

}  // namespace

bool isOn(LoginItemStatus status) { return status == LoginItemStatus::enabled || status == LoginItemStatus::requiresApproval; }

bool loadStartOnLoginEnabled(SettingsStore& store, LoginItem& loginItem) {
  return store.contains(startOnLoginKey) ? store.boolValue(startOnLoginKey) : isOn(loginItem.status());
}

void saveStartOnLoginEnabled(SettingsStore& store, bool enabled) { store.setBool(startOnLoginKey, enabled); }

double loadWindowPadding(SettingsStore& store) {
  if (!store.contains(windowPaddingKey)) return defaultWindowPadding;
  const double padding = store.doubleValue(windowPaddingKey);
  return padding >= 0 ? padding : 0;
}

void saveWindowPadding(SettingsStore& store, double padding) { store.setDouble(windowPaddingKey, padding); }

ShortcutBindings loadShortcutBindings(SettingsStore& store) {
  const auto stored = store.data(shortcutBindingsKey);
  return stored ? decodeBindings(*stored).value_or(ShortcutBindings{}) : ShortcutBindings{};
}

void saveShortcutBindings(SettingsStore& store, const ShortcutBindings& bindings) {
  store.setData(shortcutBindingsKey, encodeBindings(bindings));
}

PlacementPreferences loadAppPlacementPreferences(SettingsStore& store) {
  const auto stored = store.data(placementPreferencesKey);
  return stored ? decodePreferences(*stored).value_or(PlacementPreferences{}) : PlacementPreferences{};
}

void saveAppPlacementPreferences(SettingsStore& store, const PlacementPreferences& preferences) {
  store.setData(placementPreferencesKey, encodePreferences(preferences));
}

}  // namespace tilora
