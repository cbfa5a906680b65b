// The stored form of the remembered placements.
#include "tiling/preferences_json.h"

#include <nlohmann/json.hpp>

namespace tilora {

std::string encodePreferences(const PlacementPreferences& preferences) {
  auto object = nlohmann::json::object();
  for (const auto& [key, placement] : preferences) object[key] = text(placement);
  return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::optional<PlacementPreferences> decodePreferences(std::string_view json) {
  if (json.find('\0') != std::string_view::npos) return std::nullopt;  // the parser takes it for the end
  const auto object = nlohmann::json::parse(json, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  PlacementPreferences preferences;
  for (const auto& [key, value] : object.items()) {
    const auto* name = value.get_ptr<const std::string*>();
    const auto placement = name ? placementFrom(*name) : std::nullopt;
    if (!placement) return std::nullopt;
    preferences.emplace(key, *placement);
  }
  return preferences;
}

}  // namespace tilora
