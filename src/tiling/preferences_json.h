// The stored form of the remembered placements.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tiling/placement_memory.h"

namespace tilora {

/// One JSON object from placement key to placement, in the order of the keys. Text that is not UTF-8 is repaired. Never throws.
std::string encodePreferences(const PlacementPreferences& preferences);

/// Nothing unless `json` is one such object as a whole. Never throws.
std::optional<PlacementPreferences> decodePreferences(std::string_view json);

}  // namespace tilora
