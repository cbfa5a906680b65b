// The running applications of the X11 desktop, its screens and its windows by number.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "platform/main_queue.h"
#include "platform/screens.h"
#include "platform/window_server.h"
#include "platform/workspace.h"
#include "platform/x11/desktop_state.h"

namespace tilora::x11 {

class X11Workspace : public Workspace {
 public:
  /// Both must outlive it.
  X11Workspace(DesktopState& state, MainQueue& mainQueue) : state_(state), mainQueue_(mainQueue) {}

  std::vector<Application> runningApplications() override { return state_.applications.all(); }
  Application frontmostApplication() override;
  Application applicationWithProcessIdentifier(ProcessId pid) override { return state_.applications.find(pid); }
  Subscription observe(WorkspaceEvent event, std::function<void()> callback) override;

  /// Tells the observers of `event`, on the main queue.
  void notify(WorkspaceEvent event);

 private:
  using Callback = std::shared_ptr<std::function<void()>>;

  DesktopState& state_;
  MainQueue& mainQueue_;
  std::array<std::vector<Callback>, 5> observers_;
};

class X11Screens : public Screens {
 public:
  explicit X11Screens(DesktopState& state) : state_(state) {}

  const std::vector<ScreenRef>& screens() override { return state_.layout.screens(); }
  /// That of the active window, else the primary one.
  ScreenRef mainScreen() override;

 private:
  DesktopState& state_;
};

class X11WindowServer : public WindowServer {
 public:
  explicit X11WindowServer(DesktopState& state) : state_(state) {}

  std::vector<WindowServerEntry> entries(std::uint32_t windowNumber) override;

 private:
  DesktopState& state_;
};

}  // namespace tilora::x11
