// Recording a new key combination for an action.
#include "shortcuts/shortcut_recorder.h"

#include <utility>

namespace tilora {
namespace {

constexpr std::uint32_t escapeKeyCode = 53;
constexpr const char* refusal = "Use at least one modifier key and avoid duplicate shortcuts.";

}  // namespace

ShortcutRecorder::ShortcutRecorder(KeyMonitor& monitor, ShortcutBindingsOwner& owner) : monitor_(monitor), owner_(owner) {}

void ShortcutRecorder::toggle(ShortcutAction action) {
  if (recordingAction_ == action) {
    stopRecording();
  } else {
    startRecording(action);
  }
}

void ShortcutRecorder::startRecording(ShortcutAction action) {
  stopRecording();
  recordingAction_ = action;
  keyMonitor_ = monitor_.install([this, action](const KeyEvent& event) { return handleKey(action, event); });
  changed();
}

void ShortcutRecorder::stopRecording() {
  keyMonitor_.reset();
  if (!recordingAction_) return;
  recordingAction_.reset();
  changed();
}

void ShortcutRecorder::resetToDefaults() {
  stopRecording();
  setError(std::nullopt);
  owner_.setShortcutBindings({});
  owner_.saveShortcutBindings();
  owner_.registerHotKeys();
}

/// Every key is swallowed, so that the combination never reaches a control of the window.
bool ShortcutRecorder::handleKey(ShortcutAction action, const KeyEvent& event) {
  if (event.keyCode == escapeKeyCode) {
    stopRecording();
    return true;
  }
  const ShortcutBinding binding = {event.keyCode, modifierMask(event.flags)};
  if (accepts(binding, action)) {
    owner_.setBinding(binding, action);
    owner_.saveShortcutBindings();
    owner_.registerHotKeys();
    setError(std::nullopt);
  } else {
    setError(refusal);
  }
  stopRecording();
  return true;
}

bool ShortcutRecorder::accepts(const ShortcutBinding& binding, ShortcutAction action) const {
  return binding.modifiers != 0 && !owner_.isBindingInUse(binding, action);
}

void ShortcutRecorder::setError(std::optional<std::string> error) {
  if (shortcutError_ == error) return;
  shortcutError_ = std::move(error);
  changed();
}

void ShortcutRecorder::changed() {
  if (observer_) observer_();
}

}  // namespace tilora
