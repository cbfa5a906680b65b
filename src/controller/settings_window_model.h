// What the settings window shows and does, without its views.
#pragma once

#include <string>
#include <string_view>

#include "controller/window_manager_controller.h"
#include "shortcuts/shortcut_recorder.h"

namespace tilora {

/// The padding as a whole number, truncated toward zero: "12 px".
std::string paddingLabel(double windowPadding);

/// The title of an action's row, in UTF-8.
std::string_view shortcutTitle(ShortcutAction action);

/// The state of the settings window: its recorder and its padding stepper.
class SettingsWindowModel {
 public:
  /// Both must outlive the model.
  SettingsWindowModel(WindowManagerController& controller, KeyMonitor& monitor);

  ShortcutRecorder& recorder() { return recorder_; }
  const ShortcutRecorder& recorder() const { return recorder_; }

  std::string padding() const { return paddingLabel(controller_.windowPadding()); }
  bool canIncrementPadding() const;
  bool canDecrementPadding() const;
  /// One step of the stepper, within its range of 0 to 80 points.
  void incrementPadding();
  void decrementPadding();

  /// The message under the login toggle; empty when no line is shown.
  std::string startOnLoginError() const { return controller_.startOnLoginError().value_or(""); }

  /// The window goes away: no key monitor outlives it.
  void disappear() { recorder_.stopRecording(); }

 private:
  WindowManagerController& controller_;
  ShortcutRecorder recorder_;
};

}  // namespace tilora
