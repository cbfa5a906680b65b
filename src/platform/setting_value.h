// A value under a key of the settings store, and how it reads as another type.
#pragma once

#include <chrono>
#include <string>
#include <variant>

namespace tilora {

/// Bytes that mean something only to whoever stored them.
struct SettingData {
  std::string bytes;

  bool operator==(const SettingData&) const = default;
};

using SettingDate = std::chrono::system_clock::time_point;

/// What a settings store holds under one key. A `std::string` is UTF-8 text.
using SettingValue = std::variant<bool, double, std::string, SettingData, SettingDate>;

/// The value as a truth value (NSUserDefaults boolForKey): a number is true unless it is 0; a text is true when it begins, after white
/// space, a sign and zeros, with Y, y, T, t or a digit from 1 to 9; data and dates are false.
bool readAsBool(const SettingValue& value);

/// The value as a number (NSUserDefaults doubleForKey): a bool is 1 or 0; a text is the decimal number that it begins with after white
/// space, 0 when there is none, and infinite beyond the range of a double; data and dates are 0. Never not-a-number, unless that is stored.
double readAsNumber(const SettingValue& value);

}  // namespace tilora
