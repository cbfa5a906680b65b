// Recording a new key combination for an action: the logic of the settings window's shortcut rows, without its views.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/key_monitor.h"
#include "platform/subscription.h"
#include "shortcuts/shortcut_binding.h"

namespace tilora {

/// What the recorder changes. Implemented by whoever owns the bindings.
class ShortcutBindingsOwner {
 public:
  virtual ~ShortcutBindingsOwner() = default;

  virtual bool isBindingInUse(const ShortcutBinding& binding, ShortcutAction excluded) const = 0;
  virtual void setBinding(const ShortcutBinding& binding, ShortcutAction action) = 0;
  virtual void setShortcutBindings(const ShortcutBindings& bindings) = 0;
  virtual void saveShortcutBindings() = 0;
  virtual void registerHotKeys() = 0;
};

/// Records one action at a time. A key monitor is installed exactly while an action is being recorded, at most one at any time.
class ShortcutRecorder {
 public:
  /// Both must outlive the recorder.
  ShortcutRecorder(KeyMonitor& monitor, ShortcutBindingsOwner& owner);
  ShortcutRecorder(const ShortcutRecorder&) = delete;
  ShortcutRecorder& operator=(const ShortcutRecorder&) = delete;
  ~ShortcutRecorder() = default;

  /// The row button of an action: stops recording it, or starts, which first stops any other.
  void toggle(ShortcutAction action);
  /// Ends the recording, if there is one; the error stays. Also for when the settings window disappears.
  void stopRecording();
  /// Back to the default combinations.
  void resetToDefaults();

  /// The action being recorded; nothing when idle.
  std::optional<ShortcutAction> recordingAction() const { return recordingAction_; }
  /// The message under the rows; nothing when there is nothing to say.
  const std::optional<std::string>& shortcutError() const { return shortcutError_; }

  /// Called after each change of the two values above. One observer at a time.
  void onChange(std::function<void()> observer) { observer_ = std::move(observer); }

 private:
  void startRecording(ShortcutAction action);
  bool handleKey(ShortcutAction action, const KeyEvent& event);
  bool accepts(const ShortcutBinding& binding, ShortcutAction action) const;
  void setError(std::optional<std::string> error);
  void changed();

  KeyMonitor& monitor_;
  ShortcutBindingsOwner& owner_;
  std::optional<ShortcutAction> recordingAction_;
  std::optional<Subscription> keyMonitor_;
  std::optional<std::string> shortcutError_;
  std::function<void()> observer_;
};

}  // namespace tilora
