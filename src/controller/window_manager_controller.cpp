// The one object that owns the live state of the program.
#include "controller/window_manager_controller.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controller/settings.h"
#include "tiling/command_target.h"
#include "tiling/layout.h"
#include "tiling/retile.h"
#include "windows/discovery.h"
#include "windows/screen_keys.h"
#include "windows/unicode_text.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;

constexpr auto layoutInterval = 250ms;
constexpr auto retileDelay = 200ms;
constexpr std::array raiseDelays = {0ms, 80ms, 200ms};

constexpr const char* accessibilitySettingsUrl = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

struct HotKey {
  std::uint32_t id;
  ShortcutAction action;
  WindowPlacement placement;
};

constexpr std::array<HotKey, 4> hotKeys = {{
    {1, ShortcutAction::moveLeft, WindowPlacement::left},
    {2, ShortcutAction::moveRight, WindowPlacement::right},
    {3, ShortcutAction::centerOrFullscreen, WindowPlacement::full},
    {4, ShortcutAction::floatCenter, WindowPlacement::floatCenter},
}};

}  // namespace

WindowManagerController::WindowManagerController(const Desktop& desktop) : desktop_(desktop), hotKeyManager_(desktop.hotKeys) {
  initializeState();
  registerHotKeys();
  installObservers();
  startLayoutTimer();
  desktop_.mainQueue.post(lifetime_.whileAlive([this] { requestAccessibilityPermission(true); }));
}

WindowManagerController::~WindowManagerController() {
  lifetime_.end();
  for (auto& observer : workspaceObservers_) observer.reset();
  screenObserver_.reset();
  layoutTimer_.reset();
}

void WindowManagerController::initializeState() {
  loadSettings();
  refreshStartOnLoginStatus();
  isInitializingState_ = false;
}

void WindowManagerController::loadSettings() {
  setStartOnLoginEnabled(loadStartOnLoginEnabled(desktop_.settings, desktop_.loginItem));
  setWindowPadding(loadWindowPadding(desktop_.settings));
  setShortcutBindings(loadShortcutBindings(desktop_.settings));
  memory_.setAppPlacementPreferences(loadAppPlacementPreferences(desktop_.settings));
}

void WindowManagerController::installObservers() {
  const auto observe = [this](WorkspaceEvent event) {
    return desktop_.workspace.observe(event, lifetime_.whileAlive([this] { scheduleRetile(); }));
  };
  workspaceObservers_.push_back(observe(WorkspaceEvent::launched));
  workspaceObservers_.push_back(observe(WorkspaceEvent::terminated));
  workspaceObservers_.push_back(observe(WorkspaceEvent::activated));
  workspaceObservers_.push_back(observe(WorkspaceEvent::spaceChanged));
  screenObserver_ = observe(WorkspaceEvent::screensChanged);
}

void WindowManagerController::startLayoutTimer() {
  layoutTimer_ = desktop_.mainQueue.repeat(layoutInterval, lifetime_.whileAlive([this] { retileIfTrusted(); }));
}

void WindowManagerController::setWindowPadding(double padding) {
  const double previous = windowPadding_;
  objectWillChange_.willChange(PublishedProperty::windowPadding);
  windowPadding_ = padding;
  windowPaddingDidChange(previous);
}

void WindowManagerController::windowPaddingDidChange(double previous) {
  const double clamped = windowPadding_ >= 0 ? windowPadding_ : 0;
  if (clamped != windowPadding_) {
    setWindowPadding(clamped);
    return;
  }
  if (windowPadding_ == previous) return;
  saveWindowPadding(desktop_.settings, windowPadding_);
  scheduleRetile();
}

void WindowManagerController::setShortcutBindings(const ShortcutBindings& bindings) {
  objectWillChange_.willChange(PublishedProperty::shortcutBindings);
  shortcutBindings_ = bindings;
}

void WindowManagerController::setBinding(const ShortcutBinding& binding, ShortcutAction action) {
  objectWillChange_.willChange(PublishedProperty::shortcutBindings);
  shortcutBindings_[action] = binding;
}

bool WindowManagerController::isBindingInUse(const ShortcutBinding& binding, ShortcutAction excluded) const {
  return tilora::isBindingInUse(shortcutBindings_, binding, excluded);
}

void WindowManagerController::saveShortcutBindings() { tilora::saveShortcutBindings(desktop_.settings, shortcutBindings_); }

void WindowManagerController::saveAppPlacementPreferences() {
  tilora::saveAppPlacementPreferences(desktop_.settings, memory_.appPlacementPreferences());
}

void WindowManagerController::registerHotKeys() {
  hotKeyManager_.unregisterAll();
  for (const auto& hotKey : hotKeys) {
    const auto& combination = shortcutBindings_[hotKey.action];
    hotKeyManager_.registerHotKey(hotKey.id, combination.keyCode, combination.modifiers,
                                  lifetime_.whileAlive([this, action = hotKey.action] { performShortcutAction(action); }));
  }
}

void WindowManagerController::scheduleRetile() {
  if (pendingRetile_) return;
  pendingRetile_ = true;
  desktop_.mainQueue.postAfter(retileDelay, lifetime_.whileAlive([this] {
    pendingRetile_ = false;
    retileIfTrusted();
  }));
}

void WindowManagerController::retileIfTrusted() {
  if (refreshAccessibilityTrust()) retileAllWindows();
}

void WindowManagerController::retileAllWindows() { retile(desktop_, memory_, windowPadding_); }

void WindowManagerController::performShortcutAction(ShortcutAction action) {
  const auto hotKey = std::find_if(hotKeys.begin(), hotKeys.end(), [&](const HotKey& candidate) { return candidate.action == action; });
  if (hotKey != hotKeys.end()) assignPlacementToFocusedWindow(hotKey->placement);
}

void WindowManagerController::assignPlacementToFocusedWindow(WindowPlacement placement) {
  if (!refreshAccessibilityTrust()) return;
  const auto focused = focusedWindow(desktop_);
  if (!focused || !isEligible(*focused->window)) return;
  memory_.setPlacement(focused->key, placement);
  auto target = commandTarget(*focused, desktop_);
  memory_.rememberChoice(focused->appIdentifier, target.windowIdentity, placement);
  saveAppPlacementPreferences();
  if (placement == WindowPlacement::floatCenter) {
    if (!target.screen) target.screen = screenOf(*focused->window, desktop_.screens);
    if (target.screen) {
      applyFloatCenter({focused->key, focused->window, target.screen, focused->appIdentifier, target.windowIdentity}, windowPadding_,
                       desktop_);
    }
  }
  retileAllWindows();
}

bool WindowManagerController::refreshAccessibilityTrust() {
  const bool trusted = desktop_.trust.isProcessTrusted();
  publishTrust(trusted);
  return trusted;
}

void WindowManagerController::requestAccessibilityPermission(bool prompt) {
  if (prompt) desktop_.shell.activateSelf();
  const bool trusted = desktop_.trust.isProcessTrusted(prompt);
  publishTrust(trusted);
  if (trusted) scheduleRetile();
}

void WindowManagerController::publishTrust(bool trusted) {
  if (trusted == isAccessibilityTrusted_) return;
  objectWillChange_.willChange(PublishedProperty::isAccessibilityTrusted);
  isAccessibilityTrusted_ = trusted;
}

void WindowManagerController::openAccessibilitySettings() { desktop_.shell.openURL(accessibilitySettingsUrl); }

void WindowManagerController::bringSettingsWindowToFront() {
  desktop_.shell.activateSelf();
  const auto windows = desktop_.shell.ownWindows();
  auto found =
      std::find_if(windows.begin(), windows.end(), [](const auto& window) { return containsIgnoringCase(window->title(), "settings"); });
  if (found == windows.end()) {
    found =
        std::find_if(windows.begin(), windows.end(), [](const auto& window) { return window->canBecomeKey() && !window->isMinimized(); });
  }
  if (found == windows.end()) return;
  (*found)->orderFrontRegardless();
  (*found)->makeKeyAndOrderFront();
}

void WindowManagerController::scheduleBringSettingsWindowToFront(std::chrono::milliseconds delay) {
  desktop_.mainQueue.postAfter(delay, lifetime_.whileAlive([this] { bringSettingsWindowToFront(); }));
}

void WindowManagerController::raiseSettingsWindow() {
  for (const auto delay : raiseDelays) scheduleBringSettingsWindowToFront(delay);
}

}  // namespace tilora
