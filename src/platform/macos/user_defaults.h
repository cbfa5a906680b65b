// The user's settings in the defaults database.
#pragma once

#include "platform/settings_store.h"

namespace tilora::macos {

/// The standard defaults of this program.
class UserDefaults final : public SettingsStore {
 public:
  bool contains(std::string_view key) override;
  bool boolValue(std::string_view key) override;
  double doubleValue(std::string_view key) override;
  std::optional<std::string> data(std::string_view key) override;
  std::optional<std::chrono::system_clock::time_point> date(std::string_view key) override;
  void setBool(std::string_view key, bool value) override;
  void setDouble(std::string_view key, double value) override;
  void setData(std::string_view key, std::string bytes) override;
  void setDate(std::string_view key, std::chrono::system_clock::time_point value) override;
};

}  // namespace tilora::macos
