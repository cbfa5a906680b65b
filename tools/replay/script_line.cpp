// Reading the members of a script line.
#include "replay/script_line.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "replay/json_text.h"

namespace tilora::replay {
namespace {

using Json = nlohmann::json;
using simulated::ByAttribute;
using simulated::Settability;

[[noreturn]] void refuse(const char* name, const std::string& expected) {
  throw ScriptError(jsonText(std::string_view(name)) + " must be " + expected);
}

Json parsed(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) throw ScriptError("the line contains a null character");  // the parser stops there
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    throw ScriptError("this is not valid JSON, from byte " + std::to_string(error.byte) + " on");
  } catch (const Json::exception&) {
    throw ScriptError("a number is too large");
  }
}

/// A whole number in the range of `Integer`, however it is written: 10, 10.0 and 1e1 are the same.
template <class Integer>
std::optional<Integer> wholeNumber(const Json& value) {
  using Limits = std::numeric_limits<Integer>;
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (std::in_range<Integer>(number)) return static_cast<Integer>(number);
  } else if (value.is_number_integer()) {
    const auto number = value.get<std::int64_t>();
    if (std::in_range<Integer>(number)) return static_cast<Integer>(number);
  } else if (value.is_number_float()) {
    const auto number = value.get<double>();
    const bool isInRange = number >= static_cast<double>(Limits::min()) && number < std::ldexp(1.0, Limits::digits);
    if (isInRange && std::trunc(number) == number) return static_cast<Integer>(number);
  }
  return std::nullopt;
}

template <class Integer>
Integer readWholeNumber(const Json& value, const char* name) {
  using Limits = std::numeric_limits<Integer>;
  const auto number = wholeNumber<Integer>(value);
  if (!number) refuse(name, "a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()));
  return *number;
}

/// The entry of a table that has the text of `value`.
template <class Value, std::size_t count>
Value readOneOf(const std::array<std::pair<std::string_view, Value>, count>& table, const Json& value, const char* name) {
  const auto* text = value.get_ptr<const std::string*>();
  std::string listed;
  for (const auto& [entryText, entry] : table) {
    if (text && *text == entryText) return entry;
    listed += (listed.empty() ? "\"" : ", \"") + std::string(entryText) + "\"";
  }
  refuse(name, "one of " + listed);
}

template <std::size_t count>
std::array<double, count> readNumbers(const Json& value, const char* name, const char* expected) {
  if (!value.is_array() || value.size() != count) refuse(name, expected);
  std::array<double, count> numbers{};
  for (std::size_t i = 0; i < count; ++i) {
    if (!value[i].is_number()) refuse(name, expected);
    numbers[i] = value[i].template get<double>();
  }
  return numbers;
}

const Json* memberOf(const Json& object, const char* name) {
  const auto found = object.find(name);
  return found == object.end() ? nullptr : &*found;
}

AttributeValue readNumberObject(const Json& value) {
  if (const auto integer = wholeNumber<std::int64_t>(value)) return Number(*integer);
  return Number(value.get<double>());
}

}  // namespace

ScriptLine::ScriptLine(std::string_view text) : members_(parsed(text)) {
  if (!members_.is_object()) throw ScriptError("a line must be a JSON object");
}

const Json& ScriptLine::member(const char* name) const {
  const auto* found = raw(name);
  if (!found) throw ScriptError("\"" + std::string(name) + "\" is missing");
  return *found;
}

const Json* ScriptLine::raw(const char* name) const { return memberOf(members_, name); }

template <>
bool ScriptLine::read(const Json& value, const char* name) {
  if (!value.is_boolean()) refuse(name, "true or false");
  return value.get<bool>();
}

template <>
std::int32_t ScriptLine::read(const Json& value, const char* name) {
  return readWholeNumber<std::int32_t>(value, name);
}

template <>
std::uint32_t ScriptLine::read(const Json& value, const char* name) {
  return readWholeNumber<std::uint32_t>(value, name);
}

template <>
std::int64_t ScriptLine::read(const Json& value, const char* name) {
  return readWholeNumber<std::int64_t>(value, name);
}

template <>
std::uint64_t ScriptLine::read(const Json& value, const char* name) {
  return readWholeNumber<std::uint64_t>(value, name);
}

template <>
Bits64 ScriptLine::read(const Json& value, const char* name) {
  if (const auto number = wholeNumber<std::uint64_t>(value)) return {*number};
  const auto number = wholeNumber<std::int64_t>(value);
  if (!number) refuse(name, "a whole number of at most 64 bits");
  return {static_cast<std::uint64_t>(*number)};
}

template <>
double ScriptLine::read(const Json& value, const char* name) {
  if (!value.is_number()) refuse(name, "a number");
  return value.get<double>();
}

template <>
std::string ScriptLine::read(const Json& value, const char* name) {
  if (!value.is_string()) refuse(name, "a string");
  return value.get<std::string>();
}

template <>
Rect ScriptLine::read(const Json& value, const char* name) {
  const auto numbers = readNumbers<4>(value, name, "a rectangle [x, y, width, height]");
  return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

template <>
AttributeValue ScriptLine::read(const Json& value, const char* name) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_boolean()) return Number(static_cast<std::int64_t>(value.get<bool>()));
  if (value.is_number()) return readNumberObject(value);
  if (const auto* point = memberOf(value, "point")) {
    const auto numbers = readNumbers<2>(*point, name, "a point [x, y]");
    return Point{numbers[0], numbers[1]};
  }
  if (const auto* size = memberOf(value, "size")) {
    const auto numbers = readNumbers<2>(*size, name, "a size [width, height]");
    return Size{numbers[0], numbers[1]};
  }
  if (const auto* other = memberOf(value, "other"); other && *other == Json(true)) return ForeignValue{};
  refuse(name, R"(a string, a number, true, false, {"point":[x,y]}, {"size":[w,h]} or {"other":true})");
}

template <>
SettingValue ScriptLine::read(const Json& value, const char* name) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number()) return value.get<double>();
  if (value.is_string()) return value.get<std::string>();
  if (const auto* data = memberOf(value, "data"); data && data->is_string()) return SettingData{data->get<std::string>()};
  refuse(name, R"(a string, a number, true, false or {"data":string})");
}

template <>
Settability ScriptLine::read(const Json& value, const char* name) {
  if (value.is_boolean()) return value.get<bool>() ? Settability::yes : Settability::no;
  if (value != Json("error")) refuse(name, R"(true, false or "error")");
  return Settability::error;
}

template <>
ByAttribute<Settability> ScriptLine::read(const Json& value, const char* name) {
  ByAttribute<Settability> settable;
  if (!value.is_array()) refuse(name, "an array of attribute names");
  for (const auto& entry : value) {
    if (!entry.is_string()) refuse(name, "an array of attribute names");
    if (const auto attribute = attributeNamed(entry.get_ref<const std::string&>())) settable[*attribute] = Settability::yes;
  }
  return settable;
}

template <>
ByAttribute<std::optional<AttributeValue>> ScriptLine::read(const Json& value, const char* name) {
  ByAttribute<std::optional<AttributeValue>> attributes;
  if (!value.is_object()) refuse(name, "an object of attributes");
  for (const auto& [key, entry] : value.items()) {
    auto entryValue = read<AttributeValue>(entry, key.c_str());
    if (const auto attribute = attributeNamed(key)) attributes[*attribute] = std::move(entryValue);
  }
  return attributes;
}

template <>
WindowServerEntry ScriptLine::read(const Json& value, const char* name) {
  if (!value.is_object()) refuse(name, "an object or null");
  WindowServerEntry entry;
  if (const auto* pid = memberOf(value, "pid")) entry.ownerPid = read<ProcessId>(*pid, "pid");
  if (const auto* bounds = memberOf(value, "bounds")) entry.bounds = read<Rect>(*bounds, "bounds");
  return entry;
}

template <>
ActivationPolicy ScriptLine::read(const Json& value, const char* name) {
  static constexpr std::array<std::pair<std::string_view, ActivationPolicy>, 3> policies = {{
      {"regular", ActivationPolicy::regular},
      {"accessory", ActivationPolicy::accessory},
      {"prohibited", ActivationPolicy::prohibited},
  }};
  return readOneOf(policies, value, name);
}

template <>
WorkspaceEvent ScriptLine::read(const Json& value, const char* name) {
  static constexpr std::array<std::pair<std::string_view, WorkspaceEvent>, 5> events = {{
      {"launched", WorkspaceEvent::launched},
      {"terminated", WorkspaceEvent::terminated},
      {"activated", WorkspaceEvent::activated},
      {"spaceChanged", WorkspaceEvent::spaceChanged},
      {"screensChanged", WorkspaceEvent::screensChanged},
  }};
  return readOneOf(events, value, name);
}

template <>
ShortcutAction ScriptLine::read(const Json& value, const char* name) {
  static constexpr std::array<std::pair<std::string_view, ShortcutAction>, 4> actions = {{
      {"moveLeft", ShortcutAction::moveLeft},
      {"moveRight", ShortcutAction::moveRight},
      {"centerOrFullscreen", ShortcutAction::centerOrFullscreen},
      {"floatCenter", ShortcutAction::floatCenter},
  }};
  return readOneOf(actions, value, name);
}

template <>
LoginItemStatus ScriptLine::read(const Json& value, const char* name) {
  const auto status = wholeNumber<std::int32_t>(value);
  if (!status || *status < 0 || *status > 3) refuse(name, "a status from 0 to 3");
  return static_cast<LoginItemStatus>(*status);
}

}  // namespace tilora::replay
