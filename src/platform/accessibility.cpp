// The names of the accessibility attributes, and numbers as number objects read them.
#include "platform/accessibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tilora {
namespace {

constexpr std::array<std::string_view, attributeNameCount> names = {
    "AXFocusedWindow", "AXWindows", "AXRole",       "AXSubrole",      "AXMinimized", "AXPosition",
    "AXSize",          "AXTitle",   "AXIdentifier", "AXWindowNumber", "AXHidden",
};

std::int64_t truncated(double value) {
  constexpr double bound = 9223372036854775808.0;  // 2^63
  if (std::isnan(value)) return 0;
  if (value >= bound) return std::numeric_limits<std::int64_t>::max();
  if (value < -bound) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

}  // namespace

std::string_view text(AttributeName name) { return names[static_cast<std::size_t>(name)]; }

std::optional<AttributeName> attributeNamed(std::string_view text) {
  const auto found = std::find(names.begin(), names.end(), text);
  if (found == names.end()) return std::nullopt;
  return static_cast<AttributeName>(found - names.begin());
}

bool Number::toBool() const {
  return std::visit([](auto value) { return value != 0; }, value_);
}

std::int64_t Number::toInteger() const {
  if (const auto* integer = std::get_if<std::int64_t>(&value_)) return *integer;
  return truncated(std::get<double>(value_));
}

}  // namespace tilora
