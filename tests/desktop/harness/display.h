// What a test sees of a desktop, and how it waits for it to change.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "harness/geometry.h"
#include "harness/process.h"

namespace tilora::harness {

/// What happened to a watched window, in the order in which the server told it.
struct WindowEvent {
  enum class Kind : std::uint8_t { configured, mapped, unmapped, destroyed, reparented, property, focusIn, focusOut };

  xcb_window_t window = XCB_WINDOW_NONE;
  Kind kind = Kind::configured;
  /// Configured: the geometry as the event has it; in root coordinates when the event is synthetic, else relative to the parent.
  PixelRect geometry;
  bool synthetic = false;
  /// Property: which.
  xcb_atom_t atom = XCB_ATOM_NONE;
  std::chrono::steady_clock::time_point time;
};

/// A monitor as RandR 1.5 lists it.
struct Monitor {
  std::string name;
  PixelRect geometry;
  bool primary = false;

  bool operator==(const Monitor&) const = default;
};

/// The parts of _NET_WM_STRUT_PARTIAL: how far a panel reaches from each edge of the root, and along which stretch of that edge.
struct Strut {
  int left = 0, right = 0, top = 0, bottom = 0;
  int leftStart = 0, leftEnd = 0, rightStart = 0, rightEnd = 0;
  int topStart = 0, topEnd = 0, bottomStart = 0, bottomEnd = 0;
};

/// A connection to the X server under test. Throws std::runtime_error when the server cannot be reached; a window that is gone has empty
/// answers.
class Display {
 public:
  explicit Display(const std::string& name);
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;
  ~Display();

  xcb_connection_t* xcb() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }
  PixelRect rootGeometry();
  xcb_atom_t atom(std::string_view name);
  std::string atomName(xcb_atom_t atom);
  /// Waits until the server has dealt with everything sent so far.
  void sync();
  /// A timestamp of the server.
  xcb_timestamp_t serverTime();

  std::vector<std::uint32_t> cardinals(xcb_window_t window, std::string_view name);
  std::vector<std::string> atoms(xcb_window_t window, std::string_view name);
  std::string text(xcb_window_t window, std::string_view name);
  bool hasProperty(xcb_window_t window, std::string_view name);
  /// The names of all properties of a window.
  std::set<std::string> propertyNames(xcb_window_t window);
  /// The server has it when this returns.
  void setCardinals(xcb_window_t window, std::string_view name, std::string_view type, const std::vector<std::uint32_t>& values);
  Extents extents(xcb_window_t window, std::string_view name);
  bool hasState(xcb_window_t window, std::string_view state);

  /// The window's own area in root coordinates.
  std::optional<PixelRect> clientArea(xcb_window_t window);
  /// What the user sees of it: the client area and its frame, less the shadows that the client draws.
  std::optional<PixelRect> frame(xcb_window_t window);
  /// The ancestor that is a child of the root: the window manager's frame window, if it makes one; none when the window is gone.
  xcb_window_t outermost(xcb_window_t window);
  /// The area of that.
  std::optional<PixelRect> outermostArea(xcb_window_t window);
  /// Whether the window and all its ancestors are mapped.
  bool viewable(xcb_window_t window);
  /// Whether the window is iconic for its window manager (_NET_WM_STATE_HIDDEN).
  bool iconic(xcb_window_t window) { return hasState(window, "_NET_WM_STATE_HIDDEN"); }
  /// How many children of the root are mapped: frames, panels, pop-ups.
  int shownOnRoot();
  xcb_window_t activeWindow();
  xcb_window_t focusedWindow();
  std::vector<xcb_window_t> clientList();
  /// The listed windows from bottom to top, as the server stacks their frames.
  std::vector<xcb_window_t> stackingOrder();
  std::vector<Monitor> monitors();
  /// The part of `monitor` that the panels among the root's descendants leave free, and on the only monitor the window manager's own panel.
  PixelRect visibleFrame(const PixelRect& monitor);
  /// Who owns a selection; none when nobody does.
  xcb_window_t selectionOwner(std::string_view selection);
  /// The name of the window manager that answers on this server; empty when there is none.
  std::string windowManagerName();

  /// Replaces the monitors. The first one is primary.
  void setMonitors(const std::vector<Monitor>& wanted);
  /// Sends a client message to the root, as a pager or a taskbar does.
  void sendRootMessage(xcb_window_t window, std::string_view type, const std::vector<std::uint32_t>& data);
  /// Waits until the program of a window has dealt with everything that it was told so far; false when it does not answer
  /// (_NET_WM_PING).
  bool waitForProgram(xcb_window_t window);
  /// Activates a window as a taskbar does.
  void activate(xcb_window_t window);
  void minimise(xcb_window_t window);
  void changeState(xcb_window_t window, bool add, std::string_view first, std::string_view second = {});
  void close(xcb_window_t window);
  void moveToDesktop(xcb_window_t window, std::uint32_t desktop);
  void showDesktop(std::uint32_t desktop);
  std::uint32_t currentDesktop();

  /// Records the events of a window from now on. The children of the root are always watched for changes of their area.
  void watch(xcb_window_t window);
  /// What has been recorded, up to what the server tells now.
  const std::vector<WindowEvent>& events();
  void clearEvents();
  /// Waits until `holds` answers true: asked now and again after each event of the root and of the watched windows. False when the deadline
  /// passes first.
  bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline = defaultDeadline);
  /// All windows of the client list with their frames and states, in words, for a failing test.
  std::string describe();

 private:
  struct PropertyValue {
    xcb_atom_t type = XCB_ATOM_NONE;
    int format = 0;
    std::vector<std::uint8_t> bytes;
  };
  PropertyValue property(xcb_window_t window, std::string_view name);
  void takeEvents();
  void record(const xcb_generic_event_t& event);
  void send(xcb_window_t receiver, std::uint32_t mask, xcb_window_t window, std::string_view type, const std::vector<std::uint32_t>& data);
  void collectStruts(xcb_window_t window, int depth, std::vector<Strut>& struts);

  xcb_connection_t* connection_;
  xcb_screen_t* screen_ = nullptr;
  xcb_window_t helper_ = XCB_WINDOW_NONE;
  std::map<std::string, xcb_atom_t, std::less<>> atoms_;
  std::vector<WindowEvent> events_;
  /// The time that the last answer to a ping has brought back.
  xcb_timestamp_t answeredPing_ = XCB_CURRENT_TIME;
  bool woken_ = false;
};

}  // namespace tilora::harness
