// Values as JSON text.
#include "replay/json_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace tilora::replay {

std::string jsonText(double value) {
  if (std::isnan(value)) return "null";
  if (std::isinf(value)) return value > 0 ? "1e999" : "-1e999";
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  std::string text(digits.data(), end);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

std::string jsonText(std::string_view text) { return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace); }

}  // namespace tilora::replay
