// What holds of any bytes that may be stored as a setting, in the form that libFuzzer calls.
#include <cmath>
#include <string>

#include "checks.h"
#include "controller/settings.h"
#include "platform/simulated/services.h"
#include "shortcuts/binding_json.h"
#include "shortcuts/binding_text.h"
#include "tiling/preferences_json.h"

namespace {

using namespace tilora;
using fuzz::isUtf8;
using fuzz::require;

constexpr const char* paddingKey = "Tilora.WindowPadding";
constexpr const char* bindingsKey = "Tilora.ShortcutBindings";
constexpr const char* preferencesKey = "Tilora.AppPlacementPreferences";

void checkBindings(const std::string& bytes) {
  const auto bindings = decodeBindings(bytes);
  if (!bindings) return;
  require(decodeBindings(encodeBindings(*bindings)) == *bindings);
  for (const auto action : allShortcutActions) require(isUtf8(bindingText((*bindings)[action])));
}

void checkPreferences(const std::string& bytes) {
  if (const auto preferences = decodePreferences(bytes)) {
    for (const auto& [key, placement] : *preferences) require(isUtf8(key));
    require(decodePreferences(encodePreferences(*preferences)) == *preferences);
  }
  // A title can bring any text into a key.
  const auto own = decodePreferences(encodePreferences({{bytes, WindowPlacement::left}}));
  require(own && own->size() == 1 && own->begin()->second == WindowPlacement::left);
  if (isUtf8(bytes)) require(own->begin()->first == bytes);
}

/// What a store gives, whatever the user or another program put there.
void checkLoading(const SettingValue& value) {
  const simulated::EffectObserver nobody = [](const simulated::Effect&) {};
  simulated::SimulatedSettings store(nobody);
  for (const char* key : {paddingKey, bindingsKey, preferencesKey}) store.put(key, value);

  const double padding = loadWindowPadding(store);
  require(padding >= 0);
  saveWindowPadding(store, padding);
  require(loadWindowPadding(store) == padding);

  const auto bindings = loadShortcutBindings(store);
  saveShortcutBindings(store, bindings);
  require(loadShortcutBindings(store) == bindings);

  const auto preferences = loadAppPlacementPreferences(store);
  saveAppPlacementPreferences(store, preferences);
  require(loadAppPlacementPreferences(store) == preferences);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  checkBindings(bytes);
  checkPreferences(bytes);
  checkLoading(SettingData{bytes});
  checkLoading(bytes);
  require(!std::isnan(readAsNumber(bytes)));
  if (const auto placement = placementFrom(bytes)) require(text(*placement) == bytes);
  return 0;
}
