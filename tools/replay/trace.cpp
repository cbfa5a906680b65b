// The lines of the trace.
#include "replay/trace.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "replay/json_text.h"
#include "shortcuts/binding_json.h"
#include "tiling/placement.h"

namespace tilora::replay {
namespace {

using Entries = std::map<std::string, std::string>;

/// A member of a JSON object, with the comma before it.
template <class Value>
std::string member(std::string_view name, const Value& value) {
  return "," + jsonText(name) + ":" + jsonText(value);
}

std::string rawMember(std::string_view name, std::string_view json) { return "," + jsonText(name) + ":" + std::string(json); }

std::string call(std::string_view name) { return member("call", name); }

std::string pairText(std::string_view name, double first, double second) {
  return "{" + jsonText(name) + ":[" + jsonText(first) + "," + jsonText(second) + "]}";
}

struct ValueText {
  std::string operator()(bool value) const { return jsonText(value); }
  std::string operator()(double value) const { return jsonText(value); }
  std::string operator()(const std::string& value) const { return jsonText(std::string_view(value)); }
  std::string operator()(Point value) const { return pairText("point", value.x, value.y); }
  std::string operator()(Size value) const { return pairText("size", value.width, value.height); }
  std::string operator()(const SettingData& value) const { return "{\"data\":" + jsonText(std::string_view(value.bytes)) + "}"; }
  std::string operator()(SettingDate value) const { return jsonText(std::chrono::duration<double>(value.time_since_epoch()).count()); }
};

struct EffectText {
  std::string operator()(const simulated::AttributeWritten& effect) const {
    return call("setAttribute") + member("window", effect.window) + member("name", text(effect.name)) +
           rawMember("value", std::visit(ValueText{}, effect.value));
  }
  std::string operator()(const simulated::ApplicationHidden& effect) const { return call("hide") + member("pid", effect.pid); }
  std::string operator()(const simulated::ApplicationUnhidden& effect) const { return call("unhide") + member("pid", effect.pid); }
  std::string operator()(const simulated::SettingStored& effect) const {
    return call("store") + member("key", std::string_view(effect.key)) + rawMember("value", std::visit(ValueText{}, effect.value));
  }
  std::string operator()(const simulated::HotKeyRegistered& effect) const {
    return call("registerHotKey") + member("id", effect.id) + member("keyCode", effect.keyCode) + member("modifiers", effect.modifiers) +
           member("registered", effect.registered);
  }
  std::string operator()(const simulated::HotKeyUnregistered& effect) const { return call("unregisterHotKey") + member("id", effect.id); }
  std::string operator()(const simulated::LoginItemRegistered& effect) const { return call("loginRegister") + member("ok", effect.ok); }
  std::string operator()(const simulated::LoginItemUnregistered& effect) const { return call("loginUnregister") + member("ok", effect.ok); }
  std::string operator()(const simulated::TrustRequested& effect) const { return call("requestTrust") + member("prompt", effect.prompt); }
  std::string operator()(const simulated::SelfActivated&) const { return call("activateSelf"); }
  std::string operator()(const simulated::UrlOpened& effect) const { return call("openURL") + member("url", std::string_view(effect.url)); }
  std::string operator()(const simulated::KeyMonitorInstalled&) const { return call("installKeyMonitor"); }
  std::string operator()(const simulated::KeyMonitorRemoved&) const { return call("removeKeyMonitor"); }
};

std::string keyText(const WindowKey& key) { return std::to_string(key.pid) + ":" + std::to_string(key.windowNumber); }

/// An object of entries whose values are JSON already.
std::string objectText(const Entries& entries) {
  std::string members;
  for (const auto& [name, json] : entries) members += rawMember(name, json);
  return "{" + members.substr(members.empty() ? 0 : 1) + "}";
}

std::string arrayText(const WindowKeySet& keys) {
  std::vector<std::string> texts;
  texts.reserve(keys.size());
  for (const auto& key : keys) texts.push_back(jsonText(std::string_view(keyText(key))));
  std::sort(texts.begin(), texts.end());
  std::string elements;
  for (const auto& element : texts) elements += (elements.empty() ? "" : ",") + element;
  return "[" + elements + "]";
}

std::string textOrNull(const std::optional<std::string>& value) { return value ? jsonText(std::string_view(*value)) : "null"; }

/// In the stored form, sorted like the rest.
std::string bindingsText(const ShortcutBindings& bindings) { return nlohmann::json::parse(encodeBindings(bindings)).dump(); }

std::string placementsText(const WindowPlacements& placements) {
  Entries entries;
  for (const auto& [key, placement] : placements) entries.emplace(keyText(key), jsonText(text(placement)));
  return objectText(entries);
}

std::string preferencesText(const PlacementPreferences& preferences) {
  Entries entries;
  for (const auto& [key, placement] : preferences) entries.emplace(key, jsonText(text(placement)));
  return objectText(entries);
}

std::string pairingsText(const WindowPairings& pairings) {
  Entries entries;
  for (const auto& [key, partner] : pairings) entries.emplace(keyText(key), jsonText(std::string_view(keyText(partner))));
  return objectText(entries);
}

std::string visibleText(const VisibleWindowKeys& visible) {
  Entries entries;
  for (const auto& [screen, keys] : visible) entries.emplace(screen, arrayText(keys));
  return objectText(entries);
}

}  // namespace

void Trace::effect(const simulated::Effect& effect) { write(std::visit(EffectText{}, effect)); }

void Trace::willChange(PublishedProperty property) { write(call("willChange") + member("property", text(property))); }

void Trace::key(bool isSwallowed) { write(member("key", std::string_view(isSwallowed ? "swallowed" : "passed"))); }

void Trace::state(const WindowManagerController& controller, const ShortcutRecorder& recorder) {
  const auto recording = recorder.recordingAction();
  const Entries members = {
      {"windowPadding", jsonText(controller.windowPadding())},
      {"startOnLoginEnabled", jsonText(controller.startOnLoginEnabled())},
      {"isAccessibilityTrusted", jsonText(controller.isAccessibilityTrusted())},
      {"shortcutBindings", bindingsText(controller.shortcutBindings())},
      {"startOnLoginError", textOrNull(controller.startOnLoginError())},
      {"windowPlacements", placementsText(controller.windowPlacements())},
      {"appPlacementPreferences", preferencesText(controller.appPlacementPreferences())},
      {"windowPairings", pairingsText(controller.windowPairings())},
      {"visibleWindowKeysByScreen", visibleText(controller.visibleWindowKeysByScreen())},
      {"pendingRetile", jsonText(controller.pendingRetile())},
      {"recordingAction", recording ? jsonText(id(*recording)) : "null"},
      {"shortcutError", textOrNull(recorder.shortcutError())},
  };
  write(rawMember("state", objectText(members)));
}

void Trace::write(std::string_view members) { out_ << "{\"ms\":" << clock_.now().count() << members << "}\n"; }

}  // namespace tilora::replay
