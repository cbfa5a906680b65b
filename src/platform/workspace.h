// The running applications and what happens to them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/accessibility.h"
#include "platform/subscription.h"

namespace tilora {

/// How an application takes part in the desktop (NSApplicationActivationPolicy).
enum class ActivationPolicy : std::uint8_t { regular, accessory, prohibited };

/// One running application. It may end between any two calls; the last known answers stand then.
class RunningApplication {
 public:
  virtual ~RunningApplication() = default;

  virtual ProcessId processIdentifier() const = 0;
  virtual std::optional<std::string> bundleIdentifier() const = 0;
  virtual std::optional<std::string> localizedName() const = 0;
  virtual ActivationPolicy activationPolicy() const = 0;
  virtual bool isTerminated() const = 0;
  virtual bool isHidden() const = 0;
  /// Hide or show all its windows; `isHidden` answers the requested state from then on, unless the desktop refuses.
  virtual void hide() = 0;
  virtual void unhide() = 0;
};

using Application = std::shared_ptr<RunningApplication>;

/// What a workspace observer can be told of.
enum class WorkspaceEvent : std::uint8_t { launched, terminated, activated, spaceChanged, screensChanged };

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// All running applications, in the desktop's order.
  virtual std::vector<Application> runningApplications() = 0;
  /// The application that receives keys; null when there is none.
  virtual Application frontmostApplication() = 0;
  /// The running application with that process id; null when there is none. Constant time.
  virtual Application applicationWithProcessIdentifier(ProcessId pid) = 0;
  /// Calls `callback` on the main queue each time `event` happens, until the subscription ends.
  virtual Subscription observe(WorkspaceEvent event, std::function<void()> callback) = 0;
};

}  // namespace tilora
