// One line of a desktop script: its members, read by name with the type that they must have.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/login_item.h"
#include "platform/setting_value.h"
#include "platform/simulated/simulated_window.h"
#include "platform/workspace.h"
#include "shortcuts/shortcut_binding.h"

namespace tilora::replay {

/// Says in one sentence why a line cannot be read or carried out. It does not leave this folder.
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A whole number of at most 64 bits, with or without a sign.
struct Bits64 {
  std::uint64_t value = 0;
};

/// One JSON object. Members that nobody asks for are passed over; every reader throws `ScriptError`.
class ScriptLine {
 public:
  explicit ScriptLine(std::string_view text);

  bool has(const char* name) const { return members_.contains(name); }

  /// A member that must be there.
  template <class Value>
  Value get(const char* name) const {
    return read<Value>(member(name), name);
  }

  /// A member that may be missing.
  template <class Value>
  Value get(const char* name, Value fallback) const {
    return has(name) ? get<Value>(name) : fallback;
  }

  /// A member that must be there and may be null, which is nothing.
  template <class Value>
  std::optional<Value> getOrNull(const char* name) const {
    if (member(name).is_null()) return std::nullopt;
    return get<Value>(name);
  }

  /// A member that may be missing or null, which is nothing.
  template <class Value>
  std::optional<Value> find(const char* name) const {
    return has(name) ? getOrNull<Value>(name) : std::nullopt;
  }

  /// The member as it stands, for a value with members of its own; null: it is missing.
  const nlohmann::json* raw(const char* name) const;

  /// `value` as a `Value`; `name` is what it is called in an error.
  template <class Value>
  static Value read(const nlohmann::json& value, const char* name);

 private:
  const nlohmann::json& member(const char* name) const;

  nlohmann::json members_;
};

template <>
bool ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
std::int32_t ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
std::uint32_t ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
std::int64_t ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
std::uint64_t ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
Bits64 ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
double ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
std::string ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
Rect ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
AttributeValue ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
SettingValue ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
simulated::Settability ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
simulated::ByAttribute<simulated::Settability> ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
simulated::ByAttribute<std::optional<AttributeValue>> ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
WindowServerEntry ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
ActivationPolicy ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
WorkspaceEvent ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
ShortcutAction ScriptLine::read(const nlohmann::json& value, const char* name);
template <>
LoginItemStatus ScriptLine::read(const nlohmann::json& value, const char* name);

}  // namespace tilora::replay
