// Values as JSON text.
#include "replay/json_text.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace tilora::replay {

std::string jsonText(double value) {
  if (std::isnan(value)) return "null";
  if (std::isinf(value)) return value > 0 ? "1e999" : "-1e999";
  return nlohmann::json(value).dump();
}

std::string jsonText(std::string_view text) { return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace); }

}  // namespace tilora::replay
