// The stored form of the key combinations.
#include "shortcuts/binding_json.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

namespace tilora {
namespace {

using Json = nlohmann::json;

constexpr auto largest = std::numeric_limits<std::uint32_t>::max();

/// A whole number in range, however it is written: 33, 33.0 and 3.3e1 are the same.
std::optional<std::uint32_t> decodeUnsigned(const Json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number <= largest) return static_cast<std::uint32_t>(number);
  } else if (value.is_number_integer()) {
    if (value.get<std::int64_t>() == 0) return 0;  // "-0"
  } else if (value.is_number_float()) {
    const auto number = value.get<double>();
    if (number >= 0 && number <= largest && std::trunc(number) == number) return static_cast<std::uint32_t>(number);
  }
  return std::nullopt;
}

std::optional<std::uint32_t> decodeMember(const Json& object, const char* name) {
  const auto member = object.find(name);
  return member == object.end() ? std::nullopt : decodeUnsigned(*member);
}

std::optional<ShortcutBinding> decodeBinding(const Json& value) {
  if (!value.is_object()) return std::nullopt;
  const auto keyCode = decodeMember(value, "keyCode");
  const auto modifiers = decodeMember(value, "modifiers");
  if (!keyCode || !modifiers) return std::nullopt;
  return ShortcutBinding{*keyCode, *modifiers};
}

}  // namespace

std::string encodeBindings(const ShortcutBindings& bindings) {
  auto object = nlohmann::ordered_json::object();
  for (const auto action : allShortcutActions) {
    const auto& binding = bindings[action];
    object[std::string(id(action))] = {{"keyCode", binding.keyCode}, {"modifiers", binding.modifiers}};
  }
  return object.dump();
}

std::optional<ShortcutBindings> decodeBindings(std::string_view json) {
  if (json.find('\0') != std::string_view::npos) return std::nullopt;  // the parser takes it for the end
  const auto object = Json::parse(json, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  ShortcutBindings bindings;
  for (const auto action : allShortcutActions) {
    const auto member = object.find(id(action));
    const bool isMissing = member == object.end() || member->is_null();
    if (isMissing && action == ShortcutAction::floatCenter) continue;
    const auto binding = isMissing ? std::nullopt : decodeBinding(*member);
    if (!binding) return std::nullopt;
    bindings[action] = *binding;
  }
  return bindings;
}

}  // namespace tilora
