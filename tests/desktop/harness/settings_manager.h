// A settings manager (XSETTINGS, version 0.5), as the settings daemons of desktops are.
#pragma once

#include <string>
#include <string_view>

#include "harness/display.h"

namespace tilora::harness {

/// Writes the value of the settings property, in either byte order.
class SettingsValue {
 public:
  explicit SettingsValue(bool mostSignificantFirst = false) : mostSignificantFirst_(mostSignificantFirst) {}

  SettingsValue& text(std::string_view name, std::string_view value);
  SettingsValue& integer(std::string_view name, std::uint32_t value);
  SettingsValue& color(std::string_view name);
  std::string bytes() const;

 private:
  enum class Type : char { integer, text, color };

  void begin(Type type, std::string_view name);
  void addNumber(std::string& to, std::size_t number, int size) const;
  void addPadded(std::string_view text);

  bool mostSignificantFirst_;
  std::uint32_t count_ = 0;
  std::string settings_;
};

/// Manages the settings of the display from its construction on, and goes with its destruction.
class SettingsManager {
 public:
  SettingsManager(Display& display, const std::string& value);
  SettingsManager(const SettingsManager&) = delete;
  SettingsManager& operator=(const SettingsManager&) = delete;
  ~SettingsManager();

  void set(const std::string& value);
  xcb_window_t window() const { return window_; }

 private:
  Display& display_;
  xcb_window_t window_;
};

/// A value that says nothing but which theme the controls have.
inline std::string themeNamed(std::string_view name) { return SettingsValue().text("Net/ThemeName", name).bytes(); }

}  // namespace tilora::harness
