// What the menu shows and does, without its views.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "controller/window_manager_controller.h"

namespace tilora {

/// One row of the menu. The shortcut text is empty when the row shows none.
struct MenuRow {
  std::string title;
  std::string subtitle;
  /// A system symbol image name.
  std::string symbol;
  std::string shortcut;
};

/// The header of the menu: the program's name, and its version unless that is empty.
std::string menuHeader(const std::optional<std::string>& displayName, const std::optional<std::string>& bundleName,
                       const std::optional<std::string>& shortVersion, const std::optional<std::string>& bundleVersion);

/// The gap as a whole number, truncated toward zero: "8 px gap".
std::string gapLabel(double windowPadding);

class MenuModel {
 public:
  /// `openSettings` shows the settings window. The controller must outlive the model.
  MenuModel(WindowManagerController& controller, std::function<void()> openSettings);

  /// Rows 1 to 6 as they are now.
  std::array<MenuRow, 6> rows() const;
  /// The user clicks row 1 to 6; another number does nothing.
  void click(int row);
  /// Whether the card that asks for access is shown.
  bool showsPermissionCard() const { return !controller_.isAccessibilityTrusted(); }
  std::string gap() const { return gapLabel(controller_.windowPadding()); }

 private:
  WindowManagerController& controller_;
  std::function<void()> openSettings_;
};

}  // namespace tilora
