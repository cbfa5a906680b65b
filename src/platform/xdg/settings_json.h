// The text of a settings file: one JSON object whose members are the keys, each with the type of its value.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/setting_value.h"

namespace tilora::xdg {

using SettingValues = std::map<std::string, SettingValue, std::less<>>;

/// The form of an entry is {"type": ..., "value": ...}:
///
/// | type     | value                                                                      |
/// |----------|----------------------------------------------------------------------------|
/// | bool     | true or false                                                              |
/// | double   | a number; "nan", "inf" and "-inf" for what JSON has no number for          |
/// | text     | a string                                                                   |
/// | data     | a string: the bytes, when they are UTF-8                                   |
/// | data.hex | a string of two hexadecimal digits for each byte, when they are anything else |
/// | date     | whole nanoseconds since 1970-01-01 00:00 UTC                               |
///
/// Text and keys that are not UTF-8 are repaired.
std::string encodeSettings(const SettingValues& values);

/// What a text holds. `isWhole` is false when it is no such object, or when it has entries that were not understood and are missing here.
struct DecodedSettings {
  SettingValues values;
  bool isWhole = false;
};

/// Never fails: of a text that is not JSON of this form as a whole nothing is taken.
DecodedSettings decodeSettings(std::string_view text);

}  // namespace tilora::xdg
