// Keeps the list of applications and tells observers of events.
#include "platform/simulated/simulated_workspace.h"

#include <utility>

namespace tilora::simulated {

Subscription SimulatedWorkspace::observe(WorkspaceEvent event, std::function<void()> callback) {
  auto observer = std::make_shared<std::function<void()>>(std::move(callback));
  const auto entry = observers_.emplace(event, observer);
  return Subscription([this, entry, observer] {
    *observer = nullptr;
    observers_.erase(entry);
  });
}

ApplicationRef SimulatedWorkspace::find(ProcessId pid) const {
  const auto found = byPid_.find(pid);
  return found == byPid_.end() ? nullptr : *found->second;
}

void SimulatedWorkspace::add(ApplicationRef application) {
  const auto pid = application->processIdentifier();
  list_.push_back(std::move(application));
  byPid_.emplace(pid, std::prev(list_.end()));
}

void SimulatedWorkspace::remove(ProcessId pid) {
  const auto found = byPid_.find(pid);
  if (found == byPid_.end()) return;
  list_.erase(found->second);
  byPid_.erase(found);
}

void SimulatedWorkspace::notify(WorkspaceEvent event) {
  const auto [first, last] = observers_.equal_range(event);
  for (auto entry = first; entry != last; ++entry) {
    mainQueue_.post([observer = entry->second] {
      const auto callback = observer.lock();
      if (callback && *callback) (*callback)();
    });
  }
}

}  // namespace tilora::simulated
