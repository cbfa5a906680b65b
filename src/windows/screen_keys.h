// Which screen a window is on, and the names under which screens are remembered.
#pragma once

#include <string>
#include <vector>

#include "platform/screens.h"
#include "windows/managed_window.h"

namespace tilora {

/// The screens as they are at one moment, for finding those of many windows.
class WindowScreens {
 public:
  /// `screens` must outlive it.
  explicit WindowScreens(Screens& screens);

  /// The screen that contains the centre of the window; else the main screen, else the first one. Null when there are no screens.
  ScreenRef of(const AccessibilityElement& window) const;

 private:
  Screens& screens_;
  std::vector<ScreenRef> all_;
  double top_;
};

/// The same for one window.
ScreenRef screenOf(const AccessibilityElement& window, Screens& screens);

/// The name of a screen, stable while the displays stay the same: "display:1", or "frame:0:0:1512:982" for one without a number. A frame
/// that cannot be told in whole numbers is fatal.
std::string screenKey(const Screen& screen);

/// The windows of the screens that share one key, in the order of the list.
struct ScreenGroup {
  std::string key;
  std::vector<const ManagedWindow*> windows;
};

/// The windows of a list by the key of their screen, in the order in which the keys first appear. The windows must outlive the groups.
std::vector<ScreenGroup> groupByScreen(const std::vector<ManagedWindow>& windows);

}  // namespace tilora
