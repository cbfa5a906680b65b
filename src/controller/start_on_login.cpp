// The toggle that starts the program with the session, kept in step with what the system really holds.
#include <utility>

#include "controller/settings.h"
#include "controller/window_manager_controller.h"
#include "windows/unicode_text.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;

/// The system's status settles shortly after a registration.
constexpr auto statusRefreshDelay = 800ms;

constexpr const char* approvalMessage = "macOS requires approval in System Settings > General > Login Items.";
constexpr const char* moveMessage = "Could not update Login Items. Move Tilora.app to /Applications, relaunch, and try again.";
constexpr const char* genericPrefix = "Could not update Login Items: ";
constexpr const char* permissionMarker = "operation not permitted";
constexpr const char* loginItemsSettingsUrl = "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";

}  // namespace

void WindowManagerController::setStartOnLoginEnabled(bool enabled) {
  const bool previous = startOnLoginEnabled_;
  objectWillChange_.willChange(PublishedProperty::startOnLoginEnabled);
  startOnLoginEnabled_ = enabled;
  startOnLoginEnabledDidChange(previous);
}

void WindowManagerController::startOnLoginEnabledDidChange(bool previous) {
  if (isInitializingState_ || isUpdatingStartOnLoginState_) return;
  if (startOnLoginEnabled_ == previous) return;
  saveStartOnLoginEnabled(desktop_.settings, startOnLoginEnabled_);
  applyStartOnLogin();
}

void WindowManagerController::setStartOnLoginState(bool enabled) {
  isUpdatingStartOnLoginState_ = true;
  setStartOnLoginEnabled(enabled);
  isUpdatingStartOnLoginState_ = false;
}

void WindowManagerController::setStartOnLoginError(std::optional<std::string> error) {
  objectWillChange_.willChange(PublishedProperty::startOnLoginError);
  startOnLoginError_ = std::move(error);
}

void WindowManagerController::showApprovalMessageIf(LoginItemStatus status) {
  setStartOnLoginError(status == LoginItemStatus::requiresApproval ? std::optional<std::string>(approvalMessage) : std::nullopt);
}

void WindowManagerController::refreshStartOnLoginStatus() {
  const auto status = desktop_.loginItem.status();
  setStartOnLoginState(isOn(status));
  showApprovalMessageIf(status);
}

void WindowManagerController::applyStartOnLogin() {
  if (startOnLoginEnabled_) {
    turnStartOnLoginOn();
  } else {
    turnStartOnLoginOff();
  }
}

void WindowManagerController::turnStartOnLoginOff() {
  if (isOn(desktop_.loginItem.status())) {
    if (const auto failure = desktop_.loginItem.unregisterItem()) return revertStartOnLogin(*failure);
  }
  setStartOnLoginState(false);
  finishStartOnLoginChange();
}

void WindowManagerController::turnStartOnLoginOn() {
  if (!isOn(desktop_.loginItem.status())) {
    if (const auto failure = desktop_.loginItem.registerItem()) return revertStartOnLogin(*failure);
  }
  setStartOnLoginState(true);
  if (desktop_.loginItem.status() == LoginItemStatus::notFound) {
    setStartOnLoginState(false);
    setStartOnLoginError(moveMessage);
    return;
  }
  finishStartOnLoginChange();
}

void WindowManagerController::finishStartOnLoginChange() {
  showApprovalMessageIf(desktop_.loginItem.status());
  scheduleStartOnLoginStatusRefresh();
}

void WindowManagerController::revertStartOnLogin(const std::string& failure) {
  setStartOnLoginState(isOn(desktop_.loginItem.status()));
  setStartOnLoginError(containsIgnoringCase(failure, permissionMarker) ? moveMessage : genericPrefix + failure);
}

void WindowManagerController::scheduleStartOnLoginStatusRefresh() {
  desktop_.mainQueue.postAfter(statusRefreshDelay, lifetime_.whileAlive([this] { refreshStartOnLoginStatus(); }));
}

void WindowManagerController::openLoginItemsSettings() { desktop_.shell.openURL(loginItemsSettingsUrl); }

}  // namespace tilora
