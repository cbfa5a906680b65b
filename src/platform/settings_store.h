// The user's settings: values under keys that outlive the process.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace tilora {

/// A per-user key-value store. A stored value can be read at once; nothing waits for a disk. Main thread only. Nothing throws.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// Whether anything is stored under `key`, also a false or a 0.
  virtual bool contains(std::string_view key) = 0;
  /// The value as a truth value or a number; false or 0 when it is absent or cannot be read so. A bool reads as 1 or 0, a text as the
  /// decimal number that it begins with after white space.
  virtual bool boolValue(std::string_view key) = 0;
  virtual double doubleValue(std::string_view key) = 0;
  /// The bytes stored under `key`; nothing when it is absent or not data.
  virtual std::optional<std::string> data(std::string_view key) = 0;
  /// The moment stored under `key`; nothing when it is absent or not a date.
  virtual std::optional<std::chrono::system_clock::time_point> date(std::string_view key) = 0;

  virtual void setBool(std::string_view key, bool value) = 0;
  virtual void setDouble(std::string_view key, double value) = 0;
  virtual void setData(std::string_view key, std::string bytes) = 0;
  virtual void setDate(std::string_view key, std::chrono::system_clock::time_point value) = 0;
};

}  // namespace tilora
