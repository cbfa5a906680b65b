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
