// What the menu shows and does, without its views.
#include "controller/menu_model.h"

#include <utility>

#include "platform/accessibility.h"
#include "shortcuts/binding_text.h"

namespace tilora {

std::string menuHeader(const std::optional<std::string>& displayName, const std::optional<std::string>& bundleName,
                       const std::optional<std::string>& shortVersion, const std::optional<std::string>& bundleVersion) {
  const std::string name = displayName ? *displayName : bundleName.value_or("Tilora");
  const std::string version = shortVersion ? *shortVersion : bundleVersion.value_or("");
  return version.empty() ? name : name + " " + version;
}

std::string gapLabel(double windowPadding) { return std::to_string(Number(windowPadding).toInteger()) + " px gap"; }

MenuModel::MenuModel(WindowManagerController& controller, std::function<void()> openSettings)
    : controller_(controller), openSettings_(std::move(openSettings)) {}

std::array<MenuRow, 6> MenuModel::rows() const {
  const auto shortcut = [this](ShortcutAction action) { return bindingText(controller_.binding(action)); };
  return {{
      {"Settings", "Adjust behavior and shortcuts", "slider.horizontal.3", "Cmd+,"},
      {"Retile Windows", "Refresh positions immediately", "arrow.triangle.2.circlepath", ""},
      {"Focused Window Left", "Tile focused window to left", "square.lefthalf.filled", shortcut(ShortcutAction::moveLeft)},
      {"Focused Window Right", "Tile focused window to right", "square.righthalf.filled", shortcut(ShortcutAction::moveRight)},
      {"Center Floating / Fullscreen", "Center fixed windows or fill", "rectangle.inset.filled",
       shortcut(ShortcutAction::centerOrFullscreen)},
      {"Float Window Centered", "Resize to 60% width, 90% height and center", "rectangle.center.inset.filled",
       shortcut(ShortcutAction::floatCenter)},
  }};
}

void MenuModel::click(int row) {
  switch (row) {
    case 1:
      openSettings_();
      controller_.raiseSettingsWindow();
      break;
    case 2:
      if (controller_.refreshAccessibilityTrust()) controller_.retileAllWindows();
      break;
    case 3:
      controller_.assignPlacementToFocusedWindow(WindowPlacement::left);
      break;
    case 4:
      controller_.assignPlacementToFocusedWindow(WindowPlacement::right);
      break;
    case 5:
      controller_.assignPlacementToFocusedWindow(WindowPlacement::full);
      break;
    case 6:
      controller_.assignPlacementToFocusedWindow(WindowPlacement::floatCenter);
      break;
    default:
      break;
  }
}

}  // namespace tilora
