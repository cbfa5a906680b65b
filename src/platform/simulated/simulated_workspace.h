// The running applications of the simulated desktop, and the observers of its events.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/main_queue.h"
#include "platform/simulated/simulated_application.h"
#include "platform/workspace.h"

namespace tilora::simulated {

using ApplicationRef = std::shared_ptr<SimulatedApplication>;

class SimulatedWorkspace final : public Workspace {
 public:
  explicit SimulatedWorkspace(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

  std::vector<Application> runningApplications() override { return {list_.begin(), list_.end()}; }
  Application frontmostApplication() override { return frontmost; }
  Application applicationWithProcessIdentifier(ProcessId pid) override { return find(pid); }
  Subscription observe(WorkspaceEvent event, std::function<void()> callback) override;

  /// Null when no application of that id is in the list.
  ApplicationRef find(ProcessId pid) const;
  /// Appends an application; its id must not be in the list.
  void add(ApplicationRef application);
  void remove(ProcessId pid);
  /// Tells the observers of `event`, on the main queue.
  void notify(WorkspaceEvent event);

  ApplicationRef frontmost;

 private:
  using Observer = std::shared_ptr<std::function<void()>>;

  MainQueue& mainQueue_;
  std::list<ApplicationRef> list_;
  std::unordered_map<ProcessId, std::list<ApplicationRef>::iterator> byPid_;
  std::multimap<WorkspaceEvent, std::weak_ptr<std::function<void()>>> observers_;
};

}  // namespace tilora::simulated
