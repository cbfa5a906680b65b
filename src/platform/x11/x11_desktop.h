// The X11 desktop: the engine's interfaces over any EWMH window manager.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/accessibility.h"
#include "platform/hot_keys.h"
#include "platform/key_monitor.h"
#include "platform/main_queue.h"
#include "platform/pointer.h"
#include "platform/screens.h"
#include "platform/trust.h"
#include "platform/window_server.h"
#include "platform/workspace.h"
#include "platform/x11/connection.h"
#include "platform/x11/instance.h"

namespace tilora::x11 {

/// The user's word on whether Tilora may control the windows of this desktop.
class Consent {
 public:
  virtual ~Consent() = default;

  /// Cheap: asked four times a second.
  virtual bool isGiven() = 0;
  /// Asks the user, without waiting for the answer. With `missing`, tells instead what this session lacks, one sentence each. Does nothing
  /// while the user is being asked.
  virtual void ask(const std::vector<std::string>& missing) = 0;
};

/// Follows one X server. What the engine writes in one turn of the event loop leaves as one transaction at `endTurn`; reads answer from
/// what events have told, writes of this turn included. Main thread only.
class X11Desktop {
 public:
  /// Reads the desktop. Everything given must outlive it.
  X11Desktop(Connection& connection, Instance& instance, MainQueue& mainQueue, Consent& consent);
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;
  /// Leaves hidden windows hidden; `showHiddenWindows` is for a clean end.
  ~X11Desktop();

  Accessibility& accessibility();
  Workspace& workspace();
  Screens& screens();
  Pointer& pointer();
  WindowServer& windowServer();
  Trust& trust();
  HotKeys& hotKeys();
  KeyMonitor& keyMonitor();

  /// A key press of one of this process's own windows, as its X event has it. While a monitor is installed it is the monitor's alone, and
  /// the answer is true; a key that makes no key-down on its own, a modifier for instance, goes to nobody then.
  bool monitorKey(xcb_keycode_t keycode, std::uint16_t state);
  /// Restores, raises and focuses one of this process's own windows, whichever program is active.
  void activate(xcb_window_t window);
  /// Gives the keyboard back to the window of another program that had it last, and calls `then` in a later turn, once that window is the
  /// active one. Nothing is called when there is no such window or it does not become active; a second call replaces the first.
  void returnFocus(std::function<void()> then);
  /// To be called when one of this process's own windows has grabbed the whole keyboard.
  void keyboardTaken();
  /// The theme of the desktop's controls; empty when nobody tells.
  const std::string& themeName() const;
  /// Calls `changed` whenever that changes. One at a time.
  void onThemeChanged(std::function<void()> changed);
  /// One sentence for everything that this session lacks; empty: windows can be controlled once the user agrees.
  std::vector<std::string> missingSupport() const;

  /// The socket to watch for reading.
  int fileDescriptor() const;
  /// Takes in every event that has arrived and calls whom it concerns. False: the connection is lost.
  bool dispatch();
  /// Sends what was written since the last call. To be called before the event loop waits; takes in events that arrived meanwhile. False:
  /// the connection is lost.
  bool endTurn();
  /// Shows every window that Tilora hid, each on its own desktop, and returns when the server has all of it. Keeps the current desktop, the
  /// stacking and the focus. False: the connection is lost, and what was hidden is for the next start to find.
  bool showHiddenWindows();

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tilora::x11
