// Puts the parts of the simulated desktop together and keeps them in step.
#include "platform/simulated/simulated_desktop.h"

#include <utility>

namespace tilora::simulated {

SimulatedDesktop::SimulatedDesktop()
    : report_([this](const Effect& effect) {
        if (observer_) {
          observer_(effect);
        } else {
          effects_.push_back(effect);
        }
      }),
      onWrite_([this](SimulatedWindow& window, AttributeName name, const auto& value) { written(window, name, value); }),
      workspace_(clock_),
      accessibility_(*this),
      trust_(report_),
      hotKeys_(report_),
      keyMonitor_(report_),
      loginItem_(report_),
      settings_(report_),
      shell_(report_) {}

Desktop SimulatedDesktop::interfaces() {
  return {ownProcessId_, accessibility_, workspace_, screens_,  pointer_, windowServer_, trust_,
          hotKeys_,      keyMonitor_,    loginItem_, settings_, clock_,   shell_};
}

bool SimulatedDesktop::addApplication(ProcessId pid, ApplicationTraits traits) {
  if (hasApplication(pid)) return false;
  workspace_.add(std::make_shared<SimulatedApplication>(pid, std::move(traits), report_));
  return true;
}

void SimulatedDesktop::quit(ProcessId pid, bool linger) {
  const auto application = workspace_.find(pid);
  if (!application) return;
  for (const auto& reference : std::exchange(windowsOf_[pid], {})) {
    const auto closing = reference.lock();
    if (closing && window(closing->id()) == closing.get()) close(closing->id());
  }
  application->terminate();
  if (workspace_.frontmost == application) workspace_.frontmost = nullptr;
  if (!linger) workspace_.remove(pid);
}

void SimulatedDesktop::setWindowsUnreadable(ProcessId pid, bool unreadable) {
  if (const auto application = workspace_.find(pid)) application->windowsUnreadable = unreadable;
}

void SimulatedDesktop::setHidden(ProcessId pid, bool hidden) {
  if (const auto application = workspace_.find(pid)) application->setHidden(hidden);
}

std::size_t SimulatedDesktop::listedWindows(ProcessId pid) const {
  const auto application = workspace_.find(pid);
  return application ? application->windows.size() : 0;
}

bool SimulatedDesktop::addWindow(WindowId id, ProcessId pid, WindowTraits traits) {
  const auto application = workspace_.find(pid);
  if (!application || windows_.contains(id)) return false;
  const auto at = traits.at.value_or(application->windows.size());
  const auto window = std::make_shared<SimulatedWindow>(id, pid, std::move(traits), onWrite_);
  windows_.emplace(id, window);
  windowsOf_[pid].push_back(window);
  windowServer_.add(*window);
  if (window->isListed()) application->windows.insert(at, window);
  return true;
}

const SimulatedWindow* SimulatedDesktop::window(WindowId id) const {
  const auto found = windows_.find(id);
  return found == windows_.end() ? nullptr : found->second.get();
}

void SimulatedDesktop::close(WindowId id) {
  const auto found = windows_.find(id);
  if (found == windows_.end()) return;
  const auto window = found->second;
  windows_.erase(found);
  windowServer_.remove(*window);
  window->close();
  const auto application = workspace_.find(window->pid());
  application->windows.erase(window);
  if (application->focusedWindow == window) application->focusedWindow = nullptr;
}

void SimulatedDesktop::setAttribute(WindowId id, AttributeName name, std::optional<AttributeValue> value) {
  const auto found = windows_.find(id);
  if (found != windows_.end()) store(*found->second, name, std::move(value));
}

void SimulatedDesktop::setSettable(WindowId id, AttributeName name, Settability answer) {
  const auto found = windows_.find(id);
  if (found != windows_.end()) found->second->setSettability(name, answer);
}

void SimulatedDesktop::setFrontmost(std::optional<ProcessId> pid) { workspace_.frontmost = pid ? workspace_.find(*pid) : nullptr; }

void SimulatedDesktop::setFocusedWindow(ProcessId pid, std::optional<WindowId> id) {
  const auto application = workspace_.find(pid);
  if (!application) return;
  const auto found = id ? windows_.find(*id) : windows_.end();
  application->focusedWindow = found == windows_.end() ? nullptr : found->second;
}

void SimulatedDesktop::setBoxing(bool pointsWork, bool sizesWork) {
  accessibility_.pointsWork = pointsWork;
  accessibility_.sizesWork = sizesWork;
}

void SimulatedDesktop::written(SimulatedWindow& window, AttributeName name, const std::variant<bool, Point, Size>& value) {
  report_(AttributeWritten{window.id(), name, value});
  if (window.isSettable(name) != true) return;
  if (const auto* truth = std::get_if<bool>(&value)) {
    store(window, name, Number(static_cast<std::int64_t>(*truth)));
  } else if (const auto* point = std::get_if<Point>(&value)) {
    store(window, name, *point);
  } else {
    store(window, name, std::get<Size>(value));
  }
}

void SimulatedDesktop::store(SimulatedWindow& window, AttributeName name, std::optional<AttributeValue> value) {
  window.store(name, std::move(value));
  if (name == AttributeName::windowNumber) windowServer_.renumber(window);
}

Element SimulatedDesktop::BoxingAccessibility::applicationElement(ProcessId pid) {
  return std::make_shared<ApplicationElement>(pid, desktop_.workspace_.find(pid));
}

std::optional<BoxedValue> SimulatedDesktop::BoxingAccessibility::boxed(Point point) {
  if (!pointsWork) return std::nullopt;
  return BoxedValue{point, nullptr};
}

std::optional<BoxedValue> SimulatedDesktop::BoxingAccessibility::boxed(Size size) {
  if (!sizesWork) return std::nullopt;
  return BoxedValue{size, nullptr};
}

}  // namespace tilora::simulated
