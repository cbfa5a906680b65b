// The running applications: which window belongs to which, in what order they stand, and whether they are hidden.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/workspace.h"
#include "platform/x11/client_model.h"

namespace tilora::x11 {

/// Called for each window whose marks were changed.
using MarksChanged = std::function<void(const ClientWindowRef&)>;

/// The windows of one client process with one WM_CLASS class. Hiding concerns its windows on the current virtual desktop.
class X11Application : public RunningApplication {
 public:
  X11Application(ProcessId pid, const ClientModel& model, const MarksChanged& marksChanged)
      : pid_(pid), model_(model), marksChanged_(marksChanged) {}

  ProcessId processIdentifier() const override { return pid_; }
  /// _GTK_APPLICATION_ID, else the class of WM_CLASS.
  std::optional<std::string> bundleIdentifier() const override;
  /// The instance of WM_CLASS, else the name of the process.
  std::optional<std::string> localizedName() const override;
  /// Regular: it has a normal window that does not skip the taskbar.
  ActivationPolicy activationPolicy() const override;
  bool isTerminated() const override { return windows_.empty(); }
  bool isHidden() const override;
  void hide() override;
  void unhide() override;

  /// Its windows, the most recently focused first, the rest in the order of _NET_CLIENT_LIST.
  const std::vector<ClientWindowRef>& windows() const { return windows_; }
  void setWindows(std::vector<ClientWindowRef> windows) { windows_ = std::move(windows); }

  /// One of its windows was shown although it is hidden: it counts as shown from now on, and each window that is still iconic as hidden by
  /// itself. Its dialogs come back.
  void dissolveHiding();

 private:
  bool countsAsHideable(const ClientWindow& window) const;

  ProcessId pid_;
  const ClientModel& model_;
  const MarksChanged& marksChanged_;
  std::vector<ClientWindowRef> windows_;
};

using X11ApplicationRef = std::shared_ptr<X11Application>;

class ApplicationRegistry {
 public:
  /// The model must outlive it.
  ApplicationRegistry(const ClientModel& model, MarksChanged marksChanged);

  /// What `update` found.
  struct Changes {
    bool launched = false;
    bool terminated = false;
  };
  /// Takes the model's windows over: assigns new ones to their applications and puts everything in order.
  Changes update();
  /// Applications with a window that is shown are not hidden.
  void settleHiding();

  /// The one with the most recently focused window first, the rest in the order of _NET_CLIENT_LIST.
  const std::vector<Application>& all() const { return all_; }
  /// Null when there is none.
  X11ApplicationRef find(ProcessId pid) const;

 private:
  /// A process as the windows tell it: a process id, else a name made up of what they have in common.
  using ProcessName = std::string;

  ProcessName processOf(const ClientWindow& window) const;
  ProcessId assign(const ClientWindow& window);

  const ClientModel& model_;
  MarksChanged marksChanged_;
  std::string host_;
  std::map<std::pair<ProcessName, std::string>, ProcessId> assigned_;
  ProcessId lastMadeUp_;
  std::map<ProcessId, X11ApplicationRef> byPid_;
  std::vector<Application> all_;
};

}  // namespace tilora::x11
