// Writing and reading the JSON form of settings without trusting what is read.
#include "platform/xdg/settings_json.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <variant>

#include "platform/xdg/utf8.h"

namespace tilora::xdg {
namespace {

using nlohmann::json;

constexpr const char* boolType = "bool";
constexpr const char* doubleType = "double";
constexpr const char* textType = "text";
constexpr const char* dataType = "data";
constexpr const char* hexDataType = "data.hex";
constexpr const char* dateType = "date";

constexpr std::string_view hexDigits = "0123456789abcdef";

std::string hexFromBytes(std::string_view bytes) {
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += hexDigits[value >> 4U];
    hex += hexDigits[value & 0xFU];
  }
  return hex;
}

std::optional<std::string> bytesFromHex(std::string_view hex) {
  if (hex.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(hex.size() / 2);
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const auto high = hexDigits.find(hex[i]);
    const auto low = hexDigits.find(hex[i + 1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    bytes += static_cast<char>(high << 4U | low);
  }
  return bytes;
}

json encodedNumber(double number) {
  if (std::isnan(number)) return "nan";
  if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
  return number;
}

json encodedEntry(const SettingValue& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return {{"type", boolType}, {"value", *truth}};
  if (const auto* number = std::get_if<double>(&value)) return {{"type", doubleType}, {"value", encodedNumber(*number)}};
  if (const auto* text = std::get_if<std::string>(&value)) return {{"type", textType}, {"value", *text}};
  if (const auto* date = std::get_if<SettingDate>(&value)) {
    const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(date->time_since_epoch());
    return {{"type", dateType}, {"value", static_cast<std::int64_t>(elapsed.count())}};
  }
  const auto& bytes = std::get<SettingData>(value).bytes;
  if (isUtf8(bytes)) return {{"type", dataType}, {"value", bytes}};
  return {{"type", hexDataType}, {"value", hexFromBytes(bytes)}};
}

/// A JSON value that is neither an array nor an object; monostate is null.
using Scalar = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

std::optional<double> number(const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) return static_cast<double>(*whole);
  if (const auto* real = std::get_if<double>(&scalar)) return *real;
  const auto* text = std::get_if<std::string>(&scalar);
  if (text == nullptr) return std::nullopt;
  if (*text == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (*text == "inf") return std::numeric_limits<double>::infinity();
  if (*text == "-inf") return -std::numeric_limits<double>::infinity();
  return std::nullopt;
}

std::optional<SettingValue> decodedEntry(std::string_view type, Scalar scalar) {
  if (type == doubleType) {
    if (const auto value = number(scalar)) return *value;
    return std::nullopt;
  }
  if (const auto* truth = std::get_if<bool>(&scalar); truth != nullptr && type == boolType) return *truth;
  if (const auto* count = std::get_if<std::int64_t>(&scalar); count != nullptr && type == dateType) {
    return SettingDate(std::chrono::duration_cast<SettingDate::duration>(std::chrono::nanoseconds(*count)));
  }
  auto* text = std::get_if<std::string>(&scalar);
  if (text == nullptr) return std::nullopt;
  if (type == textType) return std::move(*text);
  if (type == dataType) return SettingData{std::move(*text)};
  if (type != hexDataType) return std::nullopt;
  auto bytes = bytesFromHex(*text);
  if (!bytes) return std::nullopt;
  return SettingData{std::move(*bytes)};
}

/// Takes the entries as they are read, and stops at the first thing that cannot be part of a settings file: nothing deeper than an entry is
/// ever stored.
class SettingsReader final : public nlohmann::json_sax<json> {
 public:
  DecodedSettings take(bool isWellFormed) {
    if (!isWellFormed) return {};
    return {std::move(values_), isWhole_};
  }

  bool null() override { return take(Scalar()); }
  bool boolean(bool value) override { return take(Scalar(value)); }
  bool number_integer(std::int64_t value) override { return take(Scalar(value)); }
  bool number_unsigned(std::uint64_t value) override {
    const bool fits = value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return take(fits ? Scalar(static_cast<std::int64_t>(value)) : Scalar(static_cast<double>(value)));
  }
  bool number_float(double value, const std::string&) override { return take(Scalar(value)); }
  bool string(std::string& value) override { return take(Scalar(std::move(value))); }
  bool binary(json::binary_t&) override { return false; }
  bool start_array(std::size_t) override { return false; }
  bool end_array() override { return false; }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

  bool start_object(std::size_t) override {
    ++depth_;
    type_.reset();
    value_.reset();
    return depth_ <= 2;
  }

  bool key(std::string& name) override {
    (depth_ == 1 ? key_ : member_) = std::move(name);
    return true;
  }

  bool end_object() override {
    if (--depth_ == 1) endEntry();
    return true;
  }

 private:
  /// A scalar in the place of an entry is an entry that is not understood; one in the place of the whole ends the reading.
  bool take(Scalar scalar) {
    if (depth_ < 2) {
      isWhole_ = false;
      return depth_ == 1;
    }
    if (auto* text = std::get_if<std::string>(&scalar); text != nullptr && member_ == "type") {
      type_ = std::move(*text);
    } else if (member_ == "value") {
      value_ = std::move(scalar);
    } else {
      isWhole_ = false;
    }
    return true;
  }

  void endEntry() {
    auto value = type_ && value_ ? decodedEntry(*type_, std::move(*value_)) : std::nullopt;
    if (value) {
      values_.insert_or_assign(std::move(key_), std::move(*value));
    } else {
      isWhole_ = false;
    }
  }

  SettingValues values_;
  bool isWhole_ = true;
  int depth_ = 0;
  std::string key_;
  std::string member_;
  std::optional<std::string> type_;
  std::optional<Scalar> value_;
};

}  // namespace

std::string encodeSettings(const SettingValues& values) {
  json object = json::object();
  for (const auto& [key, value] : values) object[key] = encodedEntry(value);
  constexpr int indentation = 2;
  return object.dump(indentation, ' ', false, json::error_handler_t::replace) + '\n';
}

DecodedSettings decodeSettings(std::string_view text) {
  SettingsReader reader;
  const bool isWellFormed = json::sax_parse(text.begin(), text.end(), &reader);
  return reader.take(isWellFormed);
}

}  // namespace tilora::xdg
