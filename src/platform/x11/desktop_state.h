// What the parts of the X11 desktop share.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <optional>

#include "platform/screens.h"
#include "platform/x11/applications.h"
#include "platform/x11/client_model.h"
#include "platform/x11/connection.h"
#include "platform/x11/event_queue.h"
#include "platform/x11/focus_keeper.h"
#include "platform/x11/frame_writer.h"
#include "platform/x11/hide_writer.h"
#include "platform/x11/manager_barrier.h"
#include "platform/x11/monitors.h"
#include "platform/x11/server_clock.h"
#include "platform/x11/window_changes.h"

namespace tilora::x11 {

/// The state of the desktop and the writers that work on it, in the order in which they depend on each other.
class DesktopState {
 public:
  DesktopState(Connection& server, xcb_window_t helper, MainQueue& mainQueue, std::function<void()> focusChanged);

  Connection& connection;
  EventQueue events;
  ServerClock clock;
  ManagerBarrier barrier;
  ClientModel model;
  ScreenLayout layout;
  FocusKeeper focus;
  FrameWriter frames;
  HideWriter hides;
  WindowChanges changes;
  ApplicationRegistry applications;

  /// The window with the focus as the engine may see it; null when that is none, a panel or the desktop's own window.
  ClientWindowRef activeWindow() const;
  /// Whether Show Desktop is on. A manager that crashed, or that does not clear what another one left, says so while a window is in use: it
  /// is not believed.
  bool isDesktopShown() const;
  /// Whether the engine sees the window among its application's: it is on the current desktop, neither Show Desktop nor a fullscreen window
  /// takes its place, and if it was just shown, it is known whether it has the focus.
  bool isListed(const ClientWindow& window) const;
  /// The index of the monitor that holds the middle of the window; absent when none does.
  std::optional<std::size_t> monitorOf(const ClientWindow& window) const;
  /// What is seen of the window in accessibility coordinates: points, origin at the top-left of all screens, y downwards.
  Rect accessibilityFrame(const ClientWindow& window) const;
  /// A point of accessibility coordinates in root coordinates.
  Point toRoot(Point point) const { return {point.x, point.y + layout.top()}; }
  /// Reads monitors and struts again. True: a screen changed.
  bool updateScreens();
  /// Works out anew which monitors are taken by a fullscreen window. Answers nothing; `isListed` does.
  void updateCoveredMonitors();

 private:
  /// By the index of the monitor; empty while no monitor is.
  std::vector<bool> covered_;
};

}  // namespace tilora::x11
