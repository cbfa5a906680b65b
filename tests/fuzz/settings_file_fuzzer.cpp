// What holds of any text that a settings file may hold, in the form that libFuzzer calls.
#include <cmath>
#include <string>

#include "checks.h"
#include "platform/xdg/settings_json.h"

namespace {

using tilora::SettingValue;
using tilora::fuzz::isUtf8;
using tilora::fuzz::require;
using tilora::xdg::decodeSettings;
using tilora::xdg::encodeSettings;
using tilora::xdg::SettingValues;

/// Equal, where not-a-number equals itself and the two zeros differ.
bool isSame(const SettingValue& one, const SettingValue& other) {
  const auto* number = std::get_if<double>(&one);
  const auto* otherNumber = std::get_if<double>(&other);
  if (number == nullptr || otherNumber == nullptr) return one == other;
  if (std::isnan(*number)) return std::isnan(*otherNumber);
  return *number == *otherNumber && std::signbit(*number) == std::signbit(*otherNumber);
}

bool isSame(const SettingValues& one, const SettingValues& other) {
  if (one.size() != other.size()) return false;
  for (auto entry = one.begin(), match = other.begin(); entry != one.end(); ++entry, ++match) {
    if (entry->first != match->first || !isSame(entry->second, match->second)) return false;
  }
  return true;
}

/// What is saved is loaded as it was.
void checkRoundTrip(const SettingValues& values) {
  const auto saved = encodeSettings(values);
  require(isUtf8(saved));
  const auto loaded = decodeSettings(saved);
  require(loaded.isWhole);
  require(isSame(loaded.values, values));
  require(encodeSettings(loaded.values) == saved);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const auto settings = decodeSettings(bytes);
  for (const auto& [key, value] : settings.values) {
    require(isUtf8(key));
    if (const auto* text = std::get_if<std::string>(&value)) require(isUtf8(*text));
  }
  checkRoundTrip(settings.values);
  checkRoundTrip({{"data", tilora::SettingData{bytes}}});
  if (isUtf8(bytes)) checkRoundTrip({{bytes, bytes}});
  return 0;
}
