// Values as JSON text.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace tilora::replay {

/// The shortest decimal that reads back as the same double; infinity as 1e999, which reads back as infinity, and not-a-number as null.
std::string jsonText(double value);
/// A JSON string. `text` is UTF-8; what is not is repaired.
std::string jsonText(std::string_view text);

template <std::same_as<bool> Truth>
std::string jsonText(Truth value) {
  return value ? "true" : "false";
}

template <std::integral Integer>
requires(!std::same_as<Integer, bool>) std::string jsonText(Integer value) { return std::to_string(value); }

}  // namespace tilora::replay
