// Answering from the desktop's state.
#include "platform/x11/x11_workspace.h"

#include <utility>

namespace tilora::x11 {

Application X11Workspace::frontmostApplication() {
  const auto active = state_.activeWindow();
  return active ? state_.applications.find(active->application) : nullptr;
}

Subscription X11Workspace::observe(WorkspaceEvent event, std::function<void()> callback) {
  auto& observers = observers_[static_cast<std::size_t>(event)];
  auto shared = std::make_shared<std::function<void()>>(std::move(callback));
  observers.push_back(shared);
  return Subscription([&observers, shared = std::move(shared)] {
    std::erase(observers, shared);
    *shared = nullptr;
  });
}

void X11Workspace::notify(WorkspaceEvent event) {
  for (const auto& observer : observers_[static_cast<std::size_t>(event)]) {
    mainQueue_.post([callback = std::weak_ptr(observer)] {
      const auto alive = callback.lock();
      if (alive && *alive) (*alive)();
    });
  }
}

ScreenRef X11Screens::mainScreen() {
  const auto& screens = state_.layout.screens();
  if (screens.empty()) return nullptr;
  if (const auto active = state_.activeWindow()) {
    if (const auto monitor = state_.monitorOf(*active)) return screens[*monitor];
  }
  return screens.front();
}

std::vector<WindowServerEntry> X11WindowServer::entries(std::uint32_t windowNumber) {
  const auto window = state_.model.find(windowNumber);
  if (!window) return {};
  return {{window->application, state_.accessibilityFrame(*window)}};
}

}  // namespace tilora::x11
