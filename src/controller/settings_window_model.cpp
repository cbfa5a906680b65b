// What the settings window shows and does, without its views.
#include "controller/settings_window_model.h"

#include <algorithm>

#include "platform/accessibility.h"

namespace tilora {
namespace {

constexpr double smallestPadding = 0;
constexpr double largestPadding = 80;
constexpr double paddingStep = 1;

}  // namespace

std::string paddingLabel(double windowPadding) { return std::to_string(Number(windowPadding).toInteger()) + " px"; }

std::string_view shortcutTitle(ShortcutAction action) {
  switch (action) {
    case ShortcutAction::moveLeft:
      return "Move Focused Window Left";
    case ShortcutAction::moveRight:
      return "Move Focused Window Right";
    case ShortcutAction::centerOrFullscreen:
      return "Center Floating / Fullscreen";
    case ShortcutAction::floatCenter:
      return "Float Window Centered (60% × 90%)";
  }
  return {};
}

SettingsWindowModel::SettingsWindowModel(WindowManagerController& controller, KeyMonitor& monitor)
    : controller_(controller), recorder_(monitor, controller) {}

bool SettingsWindowModel::canIncrementPadding() const { return controller_.windowPadding() < largestPadding; }

bool SettingsWindowModel::canDecrementPadding() const { return controller_.windowPadding() > smallestPadding; }

void SettingsWindowModel::incrementPadding() {
  if (canIncrementPadding()) controller_.setWindowPadding(std::min(controller_.windowPadding() + paddingStep, largestPadding));
}

void SettingsWindowModel::decrementPadding() {
  if (!canDecrementPadding()) return;
  controller_.setWindowPadding(std::clamp(controller_.windowPadding() - paddingStep, smallestPadding, largestPadding));
}

}  // namespace tilora
