// What happens on the desktop, line by line.
#include "replay/desktop_lines.h"

#include <unordered_map>
#include <utility>

namespace tilora::replay {
namespace {

using simulated::ApplicationTraits;
using simulated::ByAttribute;
using simulated::LoginItemTraits;
using simulated::ScreenId;
using simulated::Settability;
using simulated::WindowId;
using simulated::WindowTraits;

ByAttribute<Settability> settableByDefault() {
  ByAttribute<Settability> settable;
  settable[AttributeName::position] = Settability::yes;
  settable[AttributeName::size] = Settability::yes;
  return settable;
}

}  // namespace

bool DesktopLines::run(const std::string& what, const ScriptLine& line) {
  static const std::unordered_map<std::string, Handler> handlers = {
      {"screen", &DesktopLines::screen},
      {"removeScreen", &DesktopLines::removeScreen},
      {"mainScreen", &DesktopLines::mainScreen},
      {"app", &DesktopLines::app},
      {"quit", &DesktopLines::quit},
      {"window", &DesktopLines::window},
      {"close", &DesktopLines::close},
      {"attribute", &DesktopLines::attribute},
      {"settable", &DesktopLines::settable},
      {"windowsUnreadable", &DesktopLines::windowsUnreadable},
      {"front", &DesktopLines::front},
      {"hidden", &DesktopLines::hidden},
      {"mouse", &DesktopLines::mouse},
      {"trust", &DesktopLines::trust},
      {"defaults", &DesktopLines::defaults},
      {"login", &DesktopLines::login},
      {"hotKeyTaken", &DesktopLines::hotKeyTaken},
  };
  const auto handler = handlers.find(what);
  if (handler == handlers.end()) return false;
  (this->*handler->second)(line);
  return true;
}

void DesktopLines::screen(const ScriptLine& line) {
  const auto id = line.get<ScreenId>("id");
  Screen screen{line.get<Rect>("frame"), line.get<Rect>("visible"), std::nullopt};
  if (const auto number = line.find<Bits64>("number")) screen.number = number->value;
  desktop_.screens().set(id, screen);
}

void DesktopLines::removeScreen(const ScriptLine& line) {
  const auto id = line.get<ScreenId>("id");
  if (!desktop_.screens().wasDeclared(id)) throw ScriptError("there was never a screen " + std::to_string(id));
  desktop_.screens().remove(id);
}

void DesktopLines::mainScreen(const ScriptLine& line) {
  const auto id = line.getOrNull<ScreenId>("id");
  if (id && !desktop_.screens().wasDeclared(*id)) throw ScriptError("there was never a screen " + std::to_string(*id));
  desktop_.screens().setMain(id);
}

void DesktopLines::app(const ScriptLine& line) {
  const auto pid = line.get<ProcessId>("pid");
  ApplicationTraits traits;
  traits.bundle = line.find<std::string>("bundle");
  traits.name = line.find<std::string>("name");
  traits.policy = line.get<ActivationPolicy>("policy", ActivationPolicy::regular);
  traits.hidden = line.get<bool>("hidden", false);
  const bool isOwnProcess = line.get<bool>("ownProcess", false);
  if (desktop_.hasApplication(pid)) throw ScriptError("there already is an application " + std::to_string(pid));
  if (isOwnProcess) claimOwnProcess(pid);
  desktop_.addApplication(pid, std::move(traits));
  declaredPids_.insert(pid);
}

void DesktopLines::claimOwnProcess(ProcessId pid) {
  if (isOwnProcessDeclared_) throw ScriptError("only one application can be \"ownProcess\"");
  if (isOwnProcessClosed_) throw ScriptError(R"("ownProcess" must come before "start")");
  isOwnProcessDeclared_ = true;
  desktop_.setOwnProcessId(pid);
}

void DesktopLines::quit(const ScriptLine& line) {
  const auto pid = declaredPid(line);
  desktop_.quit(pid, line.get<bool>("linger", false));
}

void DesktopLines::window(const ScriptLine& line) {
  const auto id = line.get<WindowId>("id");
  const auto pid = declaredPid(line);
  auto traits = windowTraits(line, id);
  if (desktop_.window(id)) throw ScriptError("there already is a window " + std::to_string(id));
  if (traits.at.value_or(0) > desktop_.listedWindows(pid)) {
    throw ScriptError("\"at\" must be at most " + std::to_string(desktop_.listedWindows(pid)) + ", the number of windows there");
  }
  desktop_.addWindow(id, pid, std::move(traits));
  declaredWindows_.insert(id);
}

WindowTraits DesktopLines::windowTraits(const ScriptLine& line, WindowId id) const {
  WindowTraits traits;
  traits.attributes = line.get<ByAttribute<std::optional<AttributeValue>>>("attributes", {});
  traits.settable = line.get<ByAttribute<Settability>>("settable", settableByDefault());
  traits.hash = line.get<std::uint64_t>("hash", id);
  traits.server = line.find<WindowServerEntry>("server");
  traits.listed = line.get<bool>("listed", true);
  if (line.has("at")) traits.at = line.get<std::uint64_t>("at");
  return traits;
}

void DesktopLines::close(const ScriptLine& line) { desktop_.close(declaredWindow(line)); }

void DesktopLines::attribute(const ScriptLine& line) {
  const auto id = declaredWindow(line);
  const auto name = line.get<std::string>("name");
  auto value = line.getOrNull<AttributeValue>("value");
  if (const auto known = attributeNamed(name)) desktop_.setAttribute(id, *known, std::move(value));
}

void DesktopLines::settable(const ScriptLine& line) {
  const auto id = declaredWindow(line);
  const auto name = line.get<std::string>("name");
  const auto answer = line.get<Settability>("value");
  if (const auto known = attributeNamed(name)) desktop_.setSettable(id, *known, answer);
}

void DesktopLines::windowsUnreadable(const ScriptLine& line) {
  const auto pid = declaredPid(line);
  desktop_.setWindowsUnreadable(pid, line.get<bool>("value"));
}

void DesktopLines::front(const ScriptLine& line) {
  const bool isSomeFront = line.getOrNull<ProcessId>("pid").has_value();
  const auto pid = isSomeFront ? std::optional(declaredPid(line)) : std::nullopt;
  const auto window = line.find<WindowId>("window");
  if (window && !declaredWindows_.contains(*window)) throw ScriptError("there was never a window " + std::to_string(*window));
  const auto* known = window ? desktop_.window(*window) : nullptr;
  if (known && known->pid() != pid) throw ScriptError("window " + std::to_string(*window) + " belongs to another application");
  desktop_.setFrontmost(pid);
  if (pid && line.has("window")) desktop_.setFocusedWindow(*pid, window);
}

void DesktopLines::hidden(const ScriptLine& line) {
  const auto pid = declaredPid(line);
  desktop_.setHidden(pid, line.get<bool>("value"));
}

void DesktopLines::mouse(const ScriptLine& line) { desktop_.pointer().buttons = line.get<std::uint64_t>("buttons"); }

void DesktopLines::trust(const ScriptLine& line) { desktop_.trust().trusted = line.get<bool>("value"); }

void DesktopLines::defaults(const ScriptLine& line) {
  const auto key = line.get<std::string>("key");
  desktop_.settings().put(key, line.getOrNull<SettingValue>("value"));
}

void DesktopLines::login(const ScriptLine& line) {
  LoginItemTraits traits;
  traits.status = line.get<LoginItemStatus>("status");
  traits.registerError = line.find<std::string>("registerError");
  traits.unregisterError = line.find<std::string>("unregisterError");
  traits.statusAfterRegister = line.get<LoginItemStatus>("statusAfterRegister", LoginItemStatus::enabled);
  traits.statusAfterUnregister = line.get<LoginItemStatus>("statusAfterUnregister", LoginItemStatus::notRegistered);
  desktop_.loginItem().traits = std::move(traits);
}

void DesktopLines::hotKeyTaken(const ScriptLine& line) {
  const auto keyCode = line.get<std::uint32_t>("keyCode");
  const auto modifiers = line.get<std::uint32_t>("modifiers");
  desktop_.hotKeys().setTaken({keyCode, modifiers}, line.get<bool>("value", true));
}

ProcessId DesktopLines::declaredPid(const ScriptLine& line) const {
  const auto pid = line.get<ProcessId>("pid");
  if (!declaredPids_.contains(pid)) throw ScriptError("there was never an application " + std::to_string(pid));
  return pid;
}

WindowId DesktopLines::declaredWindow(const ScriptLine& line) const {
  const auto id = line.get<WindowId>("id");
  if (!declaredWindows_.contains(id)) throw ScriptError("there was never a window " + std::to_string(id));
  return id;
}

}  // namespace tilora::replay
