// What is done with the controller, line by line.
#include "replay/controller_lines.h"

#include <unordered_map>

namespace tilora::replay {

bool ControllerLines::run(const std::string& what, const ScriptLine& line) {
  static const std::unordered_map<std::string, Handler> handlers = {
      {"start", &ControllerLines::start},
      {"stop", &ControllerLines::stop},
      {"notify", &ControllerLines::notify},
      {"hotKey", &ControllerLines::hotKey},
      {"menu", &ControllerLines::menu},
      {"padding", &ControllerLines::padding},
      {"startOnLogin", &ControllerLines::startOnLogin},
      {"record", &ControllerLines::record},
      {"key", &ControllerLines::key},
      {"resetShortcuts", &ControllerLines::resetShortcuts},
      {"closeSettings", &ControllerLines::closeSettings},
      {"requestAccess", &ControllerLines::requestAccess},
      {"openAccessibilitySettings", &ControllerLines::openAccessibilitySettings},
      {"openLoginItems", &ControllerLines::openLoginItems},
      {"state", &ControllerLines::state},
  };
  const auto handler = handlers.find(what);
  if (handler == handlers.end()) return false;
  (this->*handler->second)(line);
  return true;
}

void ControllerLines::start(const ScriptLine& /*line*/) {
  if (wasStarted_) throw ScriptError("\"start\" can be there only once");
  wasStarted_ = true;
  session_ = std::make_unique<Session>(makeView_(desktop_));
  session_->changes = session_->controller.observeWillChange([this](PublishedProperty property) { trace_.willChange(property); });
}

void ControllerLines::stop(const ScriptLine& /*line*/) {
  if (!session_) return;
  session_->settingsWindow.disappear();
  session_.reset();
}

void ControllerLines::notify(const ScriptLine& line) {
  const auto event = line.get<WorkspaceEvent>("event");
  if (session_) desktop_.notify(event);
}

void ControllerLines::hotKey(const ScriptLine& line) {
  const auto keyCode = line.get<std::uint32_t>("keyCode");
  const auto modifiers = line.get<std::uint32_t>("modifiers");
  if (session_) desktop_.hotKeys().press({keyCode, modifiers});
}

void ControllerLines::menu(const ScriptLine& line) {
  const auto row = line.get<std::int32_t>("row");
  if (row < 2 || row > 6) throw ScriptError("\"row\" must be from 2 to 6");
  if (session_) session_->menu.click(row);
}

void ControllerLines::padding(const ScriptLine& line) {
  const auto value = line.get<double>("value");
  if (session_) session_->controller.setWindowPadding(value);
}

void ControllerLines::startOnLogin(const ScriptLine& line) {
  const auto value = line.get<bool>("value");
  if (session_) session_->controller.setStartOnLoginEnabled(value);
}

void ControllerLines::record(const ScriptLine& line) {
  const auto action = line.get<ShortcutAction>("action");
  if (session_) session_->settingsWindow.recorder().toggle(action);
}

void ControllerLines::key(const ScriptLine& line) {
  const KeyEvent event{line.get<std::uint32_t>("keyCode"), line.get<std::uint64_t>("flags")};
  trace_.key(session_ && desktop_.keyMonitor().press(event));
}

void ControllerLines::resetShortcuts(const ScriptLine& /*line*/) {
  if (session_) session_->settingsWindow.recorder().resetToDefaults();
}

void ControllerLines::closeSettings(const ScriptLine& /*line*/) {
  if (session_) session_->settingsWindow.disappear();
}

void ControllerLines::requestAccess(const ScriptLine& line) {
  const bool prompt = line.get<bool>("prompt");
  if (session_) session_->controller.requestAccessibilityPermission(prompt);
}

void ControllerLines::openAccessibilitySettings(const ScriptLine& /*line*/) {
  if (session_) session_->controller.openAccessibilitySettings();
}

void ControllerLines::openLoginItems(const ScriptLine& /*line*/) {
  if (session_) session_->controller.openLoginItemsSettings();
}

void ControllerLines::state(const ScriptLine& /*line*/) {
  if (session_) trace_.state(session_->controller, session_->settingsWindow.recorder());
}

}  // namespace tilora::replay
