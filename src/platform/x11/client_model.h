// Everything the desktop is known to hold, kept true by events: the window manager, its windows, the active one.
#pragma once

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/x11/client_fields.h"
#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"

namespace tilora::x11 {

using ClientWindowRef = std::shared_ptr<ClientWindow>;

/// What the root window and the window manager say of the desktop as a whole.
struct DesktopFacts {
  /// The check window of a conforming window manager (EWMH, _NET_SUPPORTING_WM_CHECK); none: there is no such manager at the moment.
  xcb_window_t windowManager = XCB_WINDOW_NONE;
  std::string windowManagerName;
  std::vector<xcb_atom_t> supported;
  xcb_window_t active = XCB_WINDOW_NONE;
  std::uint32_t currentDesktop = 0;
  bool showingDesktop = false;
  /// The work area of the current desktop in root coordinates; one rectangle, whatever the number of monitors.
  std::optional<PixelRect> workArea;

  bool supports(xcb_atom_t atom) const;
};

/// What changed since it was last asked.
struct ModelChanges {
  bool windows = false;
  bool vanished = false;
  bool active = false;
  bool desktop = false;
  bool struts = false;
  bool windowManager = false;
  /// What the window manager supports.
  bool support = false;
  /// Windows that were listed for the first time.
  std::vector<ClientWindowRef> appeared;
  /// Windows that somebody else has just shown: new ones, those of the first list left out, and ones brought back.
  std::vector<ClientWindowRef> shown;
  /// Windows whose iconic state or frame changed.
  std::vector<ClientWindowRef> touched;

  bool any() const {
    return windows || vanished || active || desktop || struts || windowManager || support || !appeared.empty() || !touched.empty();
  }
};

/// Reads a window once when it is first listed, and after that just what an event says has changed; all requests go out together and the
/// replies are collected after. Answers never touch the network. Main thread only.
class ClientModel {
 public:
  explicit ClientModel(Connection& connection);

  /// Notes what an event makes out of date.
  void handleEvent(const xcb_generic_event_t& event);
  /// Has the place and the size of a window read again with the next refresh.
  void reread(ClientWindow& window);
  /// Reads everything that is out of date.
  void refresh();
  /// What changed since the last call.
  ModelChanges takeChanges();

  /// Whether a window manager is there and has had the time to say what it took over from the one before.
  bool isSettled() const;
  /// Whether a window manager is there and manages the windows: one that takes over lists them only after a while, and does not hear what
  /// is asked of them before.
  bool isReady() const;
  const DesktopFacts& facts() const { return facts_; }
  /// The listed windows in the order of _NET_CLIENT_LIST.
  const std::vector<ClientWindowRef>& windows() const { return windows_; }
  /// The listed window of that id; null when there is none.
  ClientWindowRef find(xcb_window_t id) const;

 private:
  enum class RootField : std::uint8_t { clientList, active, currentDesktop, showingDesktop, check, supported, workArea };
  static constexpr std::size_t rootFieldCount = 7;

  struct RootProperty {
    RootField field;
    xcb_atom_t atom;
    std::uint32_t maximumLength;
  };
  struct WindowFetch;

  void rootPropertyChanged(xcb_atom_t atom);
  void windowPropertyChanged(ClientWindow& window, xcb_atom_t atom);
  void configured(const xcb_configure_notify_event_t& event, bool synthetic);
  void windowDestroyed(xcb_window_t id);
  void markStale(ClientWindow& window, Field field);
  void refreshRoot();
  void readRoot(RootField field, const Property& property);
  void readWindowManager(xcb_window_t candidate);
  void setWindowManager(xcb_window_t window, const std::string& name);
  void readClientList(const std::vector<std::uint32_t>& ids);
  void refreshWindows();
  WindowFetch requestFields(const ClientWindowRef& window, const std::bitset<fieldCount>& fields) const;
  void collectProperty(const ClientWindowRef& window, const PropertyField& field, xcb_get_property_cookie_t cookie);
  void collectSize(const ClientWindowRef& window, xcb_get_geometry_cookie_t cookie);
  void collectPosition(const ClientWindowRef& window, xcb_translate_coordinates_cookie_t cookie);
  void collectClient(ClientWindow& window, xcb_res_query_client_ids_cookie_t cookie);
  void fetched(const ClientWindowRef& window, Field field);
  ClientWindowRef adopt(xcb_window_t id);
  void drop(const ClientWindowRef& window);
  bool isRetained(const ClientWindow& window) const;
  void touch(const ClientWindowRef& window);
  void findParents();

  Connection& connection_;
  std::array<PropertyField, propertyFieldCount> properties_;
  std::array<RootProperty, rootFieldCount> rootProperties_;
  std::bitset<rootFieldCount> staleRoot_;
  DesktopFacts facts_;
  std::vector<ClientWindowRef> windows_;
  std::unordered_map<xcb_window_t, ClientWindowRef> byId_;
  bool hasList_ = false;
  /// Whether the present manager has listed its windows, and has left none out that the one before it had.
  bool listIsFresh_ = true;
  bool listIsWhole_ = true;
  std::vector<ClientWindowRef> stale_;
  ModelChanges changes_;
  std::optional<std::chrono::steady_clock::time_point> managerLostAt_;
};

}  // namespace tilora::x11
