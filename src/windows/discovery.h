// Which windows are managed, which one has the focus, and how large a window is.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"
#include "windows/managed_window.h"

namespace tilora {

/// The window with the focus, whether or not it is eligible.
struct FocusedWindow {
  Element window;
  WindowKey key;
  std::string appIdentifier;
};

/// The regular, living applications other than this process, in the desktop's order.
std::vector<Application> scannedApplications(const Desktop& desktop);

/// Whether a window is one to manage: a standard window, not minimised, that can be moved.
bool isEligible(const AccessibilityElement& window);

/// The role and subrole of a window. The texts are constants.
struct WindowRoles {
  std::string_view role;
  std::string_view subrole;
};

/// The roles of a window that is one to manage, "<none>" for an unreadable subrole; nothing for any other window.
std::optional<WindowRoles> rolesIfEligible(const AccessibilityElement& window);

/// The focused window of the frontmost application, unless that is this process.
std::optional<FocusedWindow> focusedWindow(const Desktop& desktop);

/// The window server's rectangle of a window, top-left origin; nothing when it knows none or knows it as another process's. A window
/// number beyond 32 bits is fatal.
std::optional<Rect> windowServerBounds(const WindowKey& key, WindowServer& windowServer);

/// A size of the window that can be laid out with: its own, or else the window server's.
std::optional<Size> usableSize(const WindowKey& key, const AccessibilityElement& window, WindowServer& windowServer);

}  // namespace tilora
