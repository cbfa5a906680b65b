// The records of one scan: a window under management, and the attributes that its identity is built from.
#pragma once

#include <optional>
#include <string_view>

#include "platform/accessibility.h"
#include "platform/screens.h"
#include "windows/window_key.h"

namespace tilora {

/// The raw attributes of one eligible window. It lives no longer than the scan that made it, which owns its texts.
struct WindowIdentitySeed {
  WindowKey key;
  Element window;
  /// The screen that contains the window; never null.
  ScreenRef screen;
  /// "AXRole"; "AXWindow" when unreadable. A window that is managed has one of a few roles, so that their texts are constants.
  std::string_view role;
  /// "AXSubrole"; "<none>" when unreadable.
  std::string_view subrole;
  /// "AXIdentifier", normalised; absent when missing or blank, and where names do not matter.
  std::optional<std::string_view> axIdentifier;
  /// "AXTitle" without white space at its ends, in its own case; "<untitled>" when missing or blank. Empty where names do not matter.
  std::string_view title;
};

/// One window under management. It lives no longer than the scan that made it, which owns its texts.
struct ManagedWindow {
  WindowKey key;
  Element window;
  ScreenRef screen;
  /// Names the owning application.
  std::string_view appIdentifier;
  /// Names the window within its application, also after a restart of either; empty where the scan was told that names do not matter.
  std::string_view windowIdentity;
};

}  // namespace tilora
