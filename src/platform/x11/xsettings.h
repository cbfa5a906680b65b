// What the desktop tells toolkits over the X server (XSETTINGS, version 0.5).
#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <string>
#include <string_view>

#include "platform/x11/connection.h"

namespace tilora::x11 {

/// The text of the setting `name` in the value of a _XSETTINGS_SETTINGS property, as valid UTF-8; empty when it is not there or the value
/// is malformed before it.
std::string xsettingsText(std::string_view bytes, std::string_view name);

/// Follows the settings manager of the connection's default screen, also when it comes later, restarts or goes. Main thread only.
class XSettings {
 public:
  /// Reads the settings. `changed` is called whenever the theme's name changes. The connection must outlive it and select structure events
  /// of its root window.
  XSettings(Connection& connection, std::function<void()> changed);
  XSettings(const XSettings&) = delete;
  XSettings& operator=(const XSettings&) = delete;
  ~XSettings() = default;

  /// Looks at an event of the connection. True: it was the settings manager's, and nobody else needs it.
  bool handleEvent(const xcb_generic_event_t& event);

  /// The theme of the desktop's controls (Net/ThemeName); empty when nobody tells.
  const std::string& themeName() const { return themeName_; }

 private:
  void findManager();
  void read();
  void setThemeName(std::string name);

  Connection& connection_;
  std::function<void()> changed_;
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_window_t manager_ = XCB_WINDOW_NONE;
  std::string themeName_;
};

}  // namespace tilora::x11
