// Declares a simulated desktop in a few lines, for tests.
#include "platform/simulated/builder.h"

#include <utility>

namespace tilora::simulated {

DesktopBuilder& DesktopBuilder::screen(ScreenId id, Rect frame, Rect visible) { return screen(id, frame, visible, id); }

DesktopBuilder& DesktopBuilder::screen(ScreenId id, Rect frame, Rect visible, std::optional<std::uint64_t> number) {
  desktop_->screens().set(id, Screen{frame, visible, number});
  return *this;
}

DesktopBuilder& DesktopBuilder::app(ProcessId pid, std::string bundle) {
  ApplicationTraits traits;
  if (!bundle.empty()) traits.bundle = std::move(bundle);
  return app(pid, std::move(traits));
}

DesktopBuilder& DesktopBuilder::app(ProcessId pid, ApplicationTraits traits) {
  desktop_->addApplication(pid, std::move(traits));
  lastPid_ = pid;
  return *this;
}

DesktopBuilder& DesktopBuilder::ownApp(ProcessId pid) {
  desktop_->setOwnProcessId(pid);
  return app(pid);
}

DesktopBuilder& DesktopBuilder::window(WindowId id, const WindowOptions& options) {
  WindowTraits traits;
  traits.attributes[AttributeName::role] = std::string("AXWindow");
  traits.attributes[AttributeName::subrole] = std::string("AXStandardWindow");
  traits.attributes[AttributeName::title] = options.title;
  traits.attributes[AttributeName::position] = Point{options.frame.x, options.frame.y};
  traits.attributes[AttributeName::size] = Size{options.frame.width, options.frame.height};
  traits.attributes[AttributeName::windowNumber] = Number(options.number.value_or(static_cast<std::int64_t>(id)));
  traits.settable[AttributeName::position] = Settability::yes;
  traits.settable[AttributeName::size] = options.resizable ? Settability::yes : Settability::no;
  traits.hash = id;
  traits.server = options.server;
  traits.listed = options.listed;
  desktop_->addWindow(id, lastPid_, std::move(traits));
  lastWindow_ = id;
  return *this;
}

DesktopBuilder& DesktopBuilder::attribute(AttributeName name, std::optional<AttributeValue> value) {
  desktop_->setAttribute(lastWindow_, name, std::move(value));
  return *this;
}

DesktopBuilder& DesktopBuilder::settable(AttributeName name, Settability answer) {
  desktop_->setSettable(lastWindow_, name, answer);
  return *this;
}

DesktopBuilder& DesktopBuilder::front(ProcessId pid, std::optional<WindowId> focused) {
  desktop_->setFrontmost(pid);
  desktop_->setFocusedWindow(pid, focused);
  return *this;
}

DesktopBuilder& DesktopBuilder::setting(const std::string& key, SettingValue value) {
  desktop_->settings().put(key, std::move(value));
  return *this;
}

DesktopBuilder& DesktopBuilder::untrusted() {
  desktop_->trust().trusted = false;
  return *this;
}

}  // namespace tilora::simulated
