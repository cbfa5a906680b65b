// The running applications and what happens to them, through NSWorkspace.
#include "platform/macos/workspace.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/ns_strings.h"

namespace tilora::macos {
namespace {

ActivationPolicy policyOf(NSApplicationActivationPolicy policy) {
  switch (policy) {
    case NSApplicationActivationPolicyRegular:
      return ActivationPolicy::regular;
    case NSApplicationActivationPolicyAccessory:
      return ActivationPolicy::accessory;
    case NSApplicationActivationPolicyProhibited:
      break;
  }
  return ActivationPolicy::prohibited;
}

/// What changes with time the system brings up to date between two turns of the main loop, not within one.
class MacApplication final : public RunningApplication {
 public:
  explicit MacApplication(NSRunningApplication* application) : application_(application) {}

  ProcessId processIdentifier() const override { return application_.processIdentifier; }
  std::optional<std::string> bundleIdentifier() const override { return utf8Text(application_.bundleIdentifier); }
  std::optional<std::string> localizedName() const override { return utf8Text(application_.localizedName); }
  ActivationPolicy activationPolicy() const override { return policyOf(application_.activationPolicy); }
  bool isTerminated() const override { return application_.terminated; }
  bool isHidden() const override { return application_.hidden; }
  // Whether the application obeys shows in the next pass, which asks again.
  void hide() override { [application_ hide]; }
  void unhide() override { [application_ unhide]; }

 private:
  NSRunningApplication* application_;
};

Application wrapped(NSRunningApplication* application) { return application ? std::make_shared<MacApplication>(application) : nullptr; }

NSNotificationName nameOf(WorkspaceEvent event) {
  switch (event) {
    case WorkspaceEvent::launched:
      return NSWorkspaceDidLaunchApplicationNotification;
    case WorkspaceEvent::terminated:
      return NSWorkspaceDidTerminateApplicationNotification;
    case WorkspaceEvent::activated:
      return NSWorkspaceDidActivateApplicationNotification;
    case WorkspaceEvent::spaceChanged:
      return NSWorkspaceActiveSpaceDidChangeNotification;
    case WorkspaceEvent::screensChanged:
      break;
  }
  return NSApplicationDidChangeScreenParametersNotification;
}

NSNotificationCenter* centerOf(WorkspaceEvent event) {
  return event == WorkspaceEvent::screensChanged ? NSNotificationCenter.defaultCenter : NSWorkspace.sharedWorkspace.notificationCenter;
}

}  // namespace

std::vector<Application> MacWorkspace::runningApplications() {
  @autoreleasepool {
    std::vector<Application> applications;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
      applications.push_back(wrapped(application));
    }
    return applications;
  }
}

Application MacWorkspace::frontmostApplication() {
  @autoreleasepool {
    return wrapped(NSWorkspace.sharedWorkspace.frontmostApplication);
  }
}

Application MacWorkspace::applicationWithProcessIdentifier(ProcessId pid) {
  @autoreleasepool {
    return wrapped([NSRunningApplication runningApplicationWithProcessIdentifier:pid]);
  }
}

Subscription MacWorkspace::observe(WorkspaceEvent event, std::function<void()> callback) {
  const auto work = std::make_shared<std::function<void()>>(std::move(callback));
  // What was on its way to the main queue when the observer was removed still arrives there.
  const std::weak_ptr<std::function<void()>> ifObserved = work;
  NSNotificationCenter* center = centerOf(event);
  id token = [center addObserverForName:nameOf(event)
                                 object:nil
                                  queue:NSOperationQueue.mainQueue
                             usingBlock:^(NSNotification*) {
                               if (const auto observed = ifObserved.lock()) (*observed)();
                             }];
  return Subscription([center, token, work] { [center removeObserver:token]; });
}

}  // namespace tilora::macos
