// The one object that owns the live state of the program.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "controller/change_notifier.h"
#include "controller/lifetime.h"
#include "platform/desktop.h"
#include "shortcuts/global_hot_key_manager.h"
#include "shortcuts/shortcut_binding.h"
#include "shortcuts/shortcut_recorder.h"
#include "tiling/placement.h"
#include "tiling/placement_memory.h"

namespace tilora {

/// Owns the settings, the tiling state, the hot keys, the observers and the layout timer.
///
/// Main thread only. Every callback that it hands out does nothing once it is gone. Nothing it does reports an error or throws; failures
/// that the user must know become `startOnLoginError`.
class WindowManagerController final : public ShortcutBindingsOwner {
 public:
  /// Loads the settings, registers the hot keys and starts observing; the first pass comes with the first tick of the timer. The desktop's
  /// parts must outlive the controller.
  explicit WindowManagerController(const Desktop& desktop);
  WindowManagerController(const WindowManagerController&) = delete;
  WindowManagerController& operator=(const WindowManagerController&) = delete;
  ~WindowManagerController() override;

  // The published values. Whoever shows them is told before every assignment, also of an equal value.

  [[nodiscard]] Subscription observeWillChange(ChangeNotifier::Observer observer) { return objectWillChange_.observe(std::move(observer)); }

  /// The gap around and between tiled windows in points, never negative.
  double windowPadding() const { return windowPadding_; }
  /// Stores the value and schedules a retile when it differs; a negative value or not-a-number becomes 0.
  void setWindowPadding(double padding);

  /// The state of the start-on-login toggle.
  bool startOnLoginEnabled() const { return startOnLoginEnabled_; }
  /// The user's toggle: stores the value and makes the system match it when it differs.
  void setStartOnLoginEnabled(bool enabled);

  /// The last answer of the trust check.
  bool isAccessibilityTrusted() const { return isAccessibilityTrusted_; }

  const ShortcutBindings& shortcutBindings() const { return shortcutBindings_; }
  /// Neither stores nor registers: the caller does.
  void setShortcutBindings(const ShortcutBindings& bindings) override;

  /// The message under the login toggle; nothing when there is nothing to say.
  const std::optional<std::string>& startOnLoginError() const { return startOnLoginError_; }

  // The bookkeeping of the engine, to be looked at.

  const WindowPlacements& windowPlacements() const { return memory_.windowPlacements(); }
  const PlacementPreferences& appPlacementPreferences() const { return memory_.appPlacementPreferences(); }
  const WindowPairings& windowPairings() const { return memory_.windowPairings(); }
  const VisibleWindowKeys& visibleWindowKeysByScreen() const { return memory_.visibleWindowKeysByScreen(); }
  bool pendingRetile() const { return pendingRetile_; }

  // Tiling.

  /// Runs one pass 0.2 s from now, if the process is trusted then; requests until then are served by the same pass.
  void scheduleRetile();
  /// Lays out every screen now. The caller has checked trust.
  void retileAllWindows();
  /// Gives the focused window a placement, remembers it for that kind of window, and runs a pass. Nothing without trust or without a
  /// focused standard window.
  void assignPlacementToFocusedWindow(WindowPlacement placement);
  /// The same with the placement of a command.
  void performShortcutAction(ShortcutAction action);

  // Shortcuts.

  const ShortcutBinding& binding(ShortcutAction action) const { return shortcutBindings_[action]; }
  void setBinding(const ShortcutBinding& binding, ShortcutAction action) override;
  bool isBindingInUse(const ShortcutBinding& binding, ShortcutAction excluded) const override;
  void saveShortcutBindings() override;
  /// Gives all combinations back and registers the current ones; one that cannot be had is skipped.
  void registerHotKeys() override;

  // Permission.

  /// Asks whether the process is trusted and publishes the answer when it changed.
  bool refreshAccessibilityTrust();
  /// The same, with the desktop's question to the user when `prompt`; schedules a retile when trusted.
  void requestAccessibilityPermission(bool prompt);
  void openAccessibilitySettings();

  // Start on login.

  /// Makes toggle and message mirror the system.
  void refreshStartOnLoginStatus();
  void openLoginItemsSettings();

  // The program's own windows.

  /// Raises the settings window, or else the first own window that can take the keyboard.
  void bringSettingsWindowToFront();
  void scheduleBringSettingsWindowToFront(std::chrono::milliseconds delay);
  /// Raises it at once and twice more, since it may not exist yet when it was asked for.
  void raiseSettingsWindow();

 private:
  void initializeState();
  void loadSettings();
  void installObservers();
  void startLayoutTimer();
  void retileIfTrusted();
  void publishTrust(bool trusted);
  void windowPaddingDidChange(double previous);
  void startOnLoginEnabledDidChange(bool previous);
  void saveAppPlacementPreferences();
  void setStartOnLoginState(bool enabled);
  void setStartOnLoginError(std::optional<std::string> error);
  void applyStartOnLogin();
  void turnStartOnLoginOff();
  void turnStartOnLoginOn();
  void finishStartOnLoginChange();
  void revertStartOnLogin(const std::string& failure);
  void showApprovalMessageIf(LoginItemStatus status);
  void scheduleStartOnLoginStatusRefresh();

  Desktop desktop_;
  ChangeNotifier objectWillChange_;
  Lifetime lifetime_;
  double windowPadding_ = 12.0;
  bool startOnLoginEnabled_ = false;
  bool isAccessibilityTrusted_ = false;
  ShortcutBindings shortcutBindings_;
  std::optional<std::string> startOnLoginError_;
  std::vector<Subscription> workspaceObservers_;
  Subscription screenObserver_;
  Subscription layoutTimer_;
  bool pendingRetile_ = false;
  PlacementMemory memory_;
  bool isInitializingState_ = true;
  bool isUpdatingStartOnLoginState_ = false;
  GlobalHotKeyManager hotKeyManager_;
};

}  // namespace tilora
