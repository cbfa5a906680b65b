// The running applications and what happens to them, as the workspace of the system tells it.
#pragma once

#include "platform/workspace.h"

namespace tilora::macos {

class MacWorkspace final : public Workspace {
 public:
  std::vector<Application> runningApplications() override;
  Application frontmostApplication() override;
  Application applicationWithProcessIdentifier(ProcessId pid) override;
  Subscription observe(WorkspaceEvent event, std::function<void()> callback) override;
};

}  // namespace tilora::macos
