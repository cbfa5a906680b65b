// A whole desktop in memory with a virtual clock: for tests, replays and benchmarks.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/desktop.h"
#include "platform/simulated/services.h"
#include "platform/simulated/simulated_application.h"
#include "platform/simulated/simulated_screens.h"
#include "platform/simulated/simulated_window.h"
#include "platform/simulated/simulated_window_server.h"
#include "platform/simulated/simulated_workspace.h"
#include "platform/simulated/virtual_clock.h"

namespace tilora::simulated {

/// Implements every interface of a desktop. What happens on it (windows come and go, the user clicks) is told with the operations below;
/// what a program does to it is reported as effects. An operation that names an application or window that is not there does nothing.
class SimulatedDesktop {
 public:
  SimulatedDesktop();
  SimulatedDesktop(const SimulatedDesktop&) = delete;
  SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
  ~SimulatedDesktop() = default;

  /// The interfaces, for whoever works on this desktop; valid while it lives. `setOwnProcessId` comes before.
  Desktop interfaces();
  void setOwnProcessId(ProcessId pid) { ownProcessId_ = pid; }

  /// Tells `observer` each effect as it happens, in place of collecting them.
  void observeEffects(EffectObserver observer) { observer_ = std::move(observer); }
  /// The effects collected since the last call.
  std::vector<Effect> takeEffects() { return std::exchange(effects_, {}); }

  /// Appends an application to those running; false when its id is taken.
  bool addApplication(ProcessId pid, ApplicationTraits traits);
  bool hasApplication(ProcessId pid) const { return workspace_.find(pid) != nullptr; }
  /// The application ends with its windows. If `linger`, it stays in the list as terminated.
  void quit(ProcessId pid, bool linger = false);
  void setWindowsUnreadable(ProcessId pid, bool unreadable);
  void setHidden(ProcessId pid, bool hidden);
  /// The number of windows under "AXWindows".
  std::size_t listedWindows(ProcessId pid) const;

  /// Adds a window to an application; false when the id is taken or there is no such application.
  bool addWindow(WindowId id, ProcessId pid, WindowTraits traits);
  /// The window of that id, for looking at; null: none.
  const SimulatedWindow* window(WindowId id) const;
  void close(WindowId id);
  /// Sets an attribute, whether or not it is settable; nothing: it can no longer be read.
  void setAttribute(WindowId id, AttributeName name, std::optional<AttributeValue> value);
  void setSettable(WindowId id, AttributeName name, Settability answer);

  /// Makes an application frontmost; nothing: none is.
  void setFrontmost(std::optional<ProcessId> pid);
  /// What an application tells as its focused window, listed or not; nothing: none.
  void setFocusedWindow(ProcessId pid, std::optional<WindowId> id);

  SimulatedScreens& screens() { return screens_; }
  SimulatedPointer& pointer() { return pointer_; }
  SimulatedTrust& trust() { return trust_; }
  SimulatedHotKeys& hotKeys() { return hotKeys_; }
  SimulatedKeyMonitor& keyMonitor() { return keyMonitor_; }
  SimulatedLoginItem& loginItem() { return loginItem_; }
  SimulatedSettings& settings() { return settings_; }
  SimulatedShell& shell() { return shell_; }
  VirtualClock& clock() { return clock_; }
  /// Tells the observers of an event, on the main queue: `clock().runPosted()` delivers it.
  void notify(WorkspaceEvent event) { workspace_.notify(event); }
  /// Makes boxing of points or of sizes fail, or work again.
  void setBoxing(bool pointsWork, bool sizesWork);

 private:
  class BoxingAccessibility final : public Accessibility {
   public:
    explicit BoxingAccessibility(const SimulatedDesktop& desktop) : desktop_(desktop) {}

    Element applicationElement(ProcessId pid) override;
    std::optional<BoxedValue> boxed(Point point) override;
    std::optional<BoxedValue> boxed(Size size) override;

    bool pointsWork = true;
    bool sizesWork = true;

   private:
    const SimulatedDesktop& desktop_;
  };

  void written(SimulatedWindow& window, AttributeName name, const std::variant<bool, Point, Size>& value);
  void store(SimulatedWindow& window, AttributeName name, std::optional<AttributeValue> value);

  EffectObserver observer_;
  std::vector<Effect> effects_;
  /// What the parts report to.
  const EffectObserver report_;
  const SimulatedWindow::WriteHandler onWrite_;

  ProcessId ownProcessId_ = 1;
  VirtualClock clock_;
  SimulatedWorkspace workspace_;
  SimulatedScreens screens_;
  SimulatedWindowServer windowServer_;
  BoxingAccessibility accessibility_;
  SimulatedPointer pointer_;
  SimulatedTrust trust_;
  SimulatedHotKeys hotKeys_;
  SimulatedKeyMonitor keyMonitor_;
  SimulatedLoginItem loginItem_;
  SimulatedSettings settings_;
  SimulatedShell shell_;
  std::unordered_map<WindowId, std::shared_ptr<SimulatedWindow>> windows_;
  /// The windows of each application, listed or not, in the order of declaration.
  std::unordered_map<ProcessId, std::vector<std::weak_ptr<SimulatedWindow>>> windowsOf_;
};

}  // namespace tilora::simulated
