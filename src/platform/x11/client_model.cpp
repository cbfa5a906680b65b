// Following the server's events and reading what they say has changed.
#include "platform/x11/client_model.h"
#include "platform/x11/event_type.h"

#include <xcb/res.h>

#include <algorithm>
#include <utility>

namespace tilora::x11 {
namespace {

/// No desktop lists more windows; a longer list is cut.
constexpr std::uint32_t longestClientList = 65536;
/// How long windows stay known after a window manager is lost, while its successor has not listed them yet.
constexpr auto retention = std::chrono::seconds(3);
/// Each round of reads can bring events that make more reads necessary; after so many the rest waits for the next turn.
constexpr int mostRounds = 8;

template <class Enum>
constexpr std::size_t index(Enum value) {
  return static_cast<std::size_t>(value);
}

}  // namespace

bool DesktopFacts::supports(xcb_atom_t atom) const { return std::find(supported.begin(), supported.end(), atom) != supported.end(); }

/// The requests for what is out of date of one window.
struct ClientModel::WindowFetch {
  ClientWindowRef window;
  std::vector<std::pair<const PropertyField*, xcb_get_property_cookie_t>> properties;
  std::optional<xcb_get_geometry_cookie_t> geometry;
  std::optional<xcb_translate_coordinates_cookie_t> origin;
  std::optional<xcb_res_query_client_ids_cookie_t> client;
};

ClientModel::ClientModel(Connection& connection)
    : connection_(connection),
      properties_(propertyFields(connection.atoms())),
      rootProperties_{{
          {RootField::check, connection.atoms()._NET_SUPPORTING_WM_CHECK, 1},
          {RootField::supported, connection.atoms()._NET_SUPPORTED, 1024},
          {RootField::clientList, connection.atoms()._NET_CLIENT_LIST, longestClientList},
          {RootField::active, connection.atoms()._NET_ACTIVE_WINDOW, 1},
          {RootField::currentDesktop, connection.atoms()._NET_CURRENT_DESKTOP, 1},
          {RootField::showingDesktop, connection.atoms()._NET_SHOWING_DESKTOP, 1},
          {RootField::workArea, connection.atoms()._NET_WORKAREA, 4 * 64},
      }} {
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.xcb(), connection_.root(), XCB_CW_EVENT_MASK, &mask);
  staleRoot_.set();
}

void ClientModel::handleEvent(const xcb_generic_event_t& event) {
  switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (change.window == connection_.root()) return rootPropertyChanged(change.atom);
      if (const auto window = find(change.window)) windowPropertyChanged(*window, change.atom);
      return;
    }
    case XCB_CONFIGURE_NOTIFY:
      return configured(reinterpret_cast<const xcb_configure_notify_event_t&>(event), (event.response_type & 0x80) != 0);
    case XCB_REPARENT_NOTIFY: {
      if (const auto window = find(reinterpret_cast<const xcb_reparent_notify_event_t&>(event).window)) markStale(*window, Field::position);
      return;
    }
    case XCB_DESTROY_NOTIFY:
      return windowDestroyed(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    default:
      return;
  }
}

void ClientModel::rootPropertyChanged(xcb_atom_t atom) {
  for (const auto& property : rootProperties_) {
    if (property.atom == atom) staleRoot_.set(index(property.field));
  }
  listIsFresh_ |= atom == connection_.atoms()._NET_CLIENT_LIST;
  if (atom == connection_.atoms()._NET_CURRENT_DESKTOP) staleRoot_.set(index(RootField::workArea));
}

void ClientModel::windowPropertyChanged(ClientWindow& window, xcb_atom_t atom) {
  if (atom == connection_.atoms()._TILORA_HIDDEN) return;  // written by this program alone
  for (const auto& property : properties_) {
    if (property.atom == atom) markStale(window, property.field);
  }
  // Managers change the decorations without a word about where the window is now.
  const Atoms& atoms = connection_.atoms();
  if (atom == atoms._NET_FRAME_EXTENTS || atom == atoms._NET_WM_STATE) markStale(window, Field::position);
}

void ClientModel::reread(ClientWindow& window) {
  markStale(window, Field::position);
  markStale(window, Field::size);
}

void ClientModel::markStale(ClientWindow& window, Field field) {
  if (window.isGone) return;
  if (window.stale.none()) stale_.push_back(byId_.at(window.id));
  window.stale.set(index(field));
}

void ClientModel::configured(const xcb_configure_notify_event_t& event, bool synthetic) {
  const auto window = find(event.window);
  if (!window) return;
  PixelRect client{window->client.x, window->client.y, event.width, event.height};
  if (synthetic) {
    // The place of the outer edge of the border that the window declared (ICCCM 4.1.5), whether or not the manager left it one.
    window->declaredBorder = event.border_width;
    client.x = event.x + event.border_width;
    client.y = event.y + event.border_width;
  } else {
    markStale(*window, Field::position);  // the coordinates of a real one are relative to the decoration
  }
  if (client == window->client) return;
  window->client = client;
  touch(window);
}

void ClientModel::windowDestroyed(xcb_window_t id) {
  if (id == facts_.windowManager) {
    // The next manager's check window may have the very same id.
    setWindowManager(XCB_WINDOW_NONE, {});
    staleRoot_.set(index(RootField::check));
    return;
  }
  if (const auto window = find(id)) drop(window);
}

void ClientModel::refresh() {
  for (int round = 0; round < mostRounds && (staleRoot_.any() || !stale_.empty()); ++round) {
    refreshRoot();
    refreshWindows();
  }
  if (changes_.windows) findParents();
}

void ClientModel::refreshRoot() {
  if (staleRoot_.none()) return;
  const auto stale = std::exchange(staleRoot_, {});
  std::vector<std::pair<RootField, xcb_get_property_cookie_t>> fetches;
  for (const auto& property : rootProperties_) {
    if (!stale.test(index(property.field))) continue;
    fetches.emplace_back(property.field, xcb_get_property(connection_.xcb(), 0, connection_.root(), property.atom,
                                                          XCB_GET_PROPERTY_TYPE_ANY, 0, property.maximumLength));
  }
  for (const auto& [field, cookie] : fetches) {
    xcb_generic_error_t* error = nullptr;
    const Property property{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(connection_.xcb(), cookie, &error)}};
    const Reply<xcb_generic_error_t> owned{error};
    readRoot(field, property);
  }
}

void ClientModel::readRoot(RootField field, const Property& property) {
  switch (field) {
    case RootField::check:
      return readWindowManager(property.item(XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE));
    case RootField::supported:
      facts_.supported = property.items(XCB_ATOM_ATOM);
      changes_.support = true;
      return;
    case RootField::clientList:
      return readClientList(property.items(XCB_ATOM_WINDOW));
    case RootField::active: {
      const auto active = property.item(XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
      changes_.active |= active != facts_.active;
      facts_.active = active;
      return;
    }
    case RootField::currentDesktop: {
      const auto desktop = property.item(XCB_ATOM_CARDINAL).value_or(0);
      changes_.desktop |= desktop != facts_.currentDesktop;
      facts_.currentDesktop = desktop;
      return;
    }
    case RootField::showingDesktop: {
      const bool showing = property.item(XCB_ATOM_CARDINAL).value_or(0) == 1;
      changes_.desktop |= showing != facts_.showingDesktop;
      facts_.showingDesktop = showing;
      return;
    }
    case RootField::workArea: {
      const auto items = property.items(XCB_ATOM_CARDINAL);
      const std::size_t first = items.size() >= (facts_.currentDesktop + std::size_t{1}) * 4 ? facts_.currentDesktop * std::size_t{4} : 0;
      std::optional<PixelRect> area;
      if (items.size() >= first + 4) {
        area = PixelRect{static_cast<int>(items[first]), static_cast<int>(items[first + 1]), static_cast<int>(items[first + 2]),
                         static_cast<int>(items[first + 3])};
      }
      changes_.struts |= area != facts_.workArea;
      facts_.workArea = area;
      return;
    }
  }
}

void ClientModel::readWindowManager(xcb_window_t candidate) {
  // A manager that ends may take with it what its successor has announced (Mutter does). The known one is there as long as its window is.
  if (candidate == XCB_WINDOW_NONE && facts_.windowManager != XCB_WINDOW_NONE) return;
  xcb_window_t confirmed = XCB_WINDOW_NONE;
  std::string name;
  if (candidate != XCB_WINDOW_NONE) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const auto select = xcb_change_window_attributes_checked(connection_.xcb(), candidate, XCB_CW_EVENT_MASK, &mask);
    const auto check =
        xcb_get_property(connection_.xcb(), 0, candidate, connection_.atoms()._NET_SUPPORTING_WM_CHECK, XCB_ATOM_WINDOW, 0, 1);
    const auto title =
        xcb_get_property(connection_.xcb(), 0, candidate, connection_.atoms()._NET_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
    const Reply<xcb_generic_error_t> selectError{xcb_request_check(connection_.xcb(), select)};
    xcb_generic_error_t* error = nullptr;
    const Property checkProperty{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(connection_.xcb(), check, &error)}};
    const Reply<xcb_generic_error_t> checkError{error};
    error = nullptr;
    const Property titleProperty{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(connection_.xcb(), title, &error)}};
    const Reply<xcb_generic_error_t> titleError{error};
    if (!selectError && checkProperty.item(XCB_ATOM_WINDOW) == candidate) {
      confirmed = candidate;
      name = titleProperty.text(connection_.atoms()).value_or("");
    }
  }
  if (confirmed != facts_.windowManager) setWindowManager(confirmed, name);
}

void ClientModel::setWindowManager(xcb_window_t window, const std::string& name) {
  if (facts_.windowManager != XCB_WINDOW_NONE) {
    managerLostAt_ = std::chrono::steady_clock::now();
    listIsFresh_ = false;
  }
  facts_.windowManager = window;
  facts_.windowManagerName = name;
  changes_.windowManager = true;
  for (const auto field : {RootField::supported, RootField::clientList, RootField::active, RootField::currentDesktop,
                           RootField::showingDesktop, RootField::workArea}) {
    staleRoot_.set(index(field));
  }
}

bool ClientModel::isSettled() const {
  if (facts_.windowManager == XCB_WINDOW_NONE) return false;
  return !managerLostAt_ || std::chrono::steady_clock::now() - *managerLostAt_ >= retention;
}

bool ClientModel::isReady() const {
  if (facts_.windowManager == XCB_WINDOW_NONE) return false;
  return (listIsFresh_ && listIsWhole_) || isSettled();
}

bool ClientModel::isRetained(const ClientWindow& window) const {
  if (window.isGone) return false;
  if (facts_.windowManager == XCB_WINDOW_NONE) return true;
  return managerLostAt_ && std::chrono::steady_clock::now() - *managerLostAt_ < retention;
}

void ClientModel::readClientList(const std::vector<std::uint32_t>& ids) {
  std::vector<ClientWindowRef> listed;
  listed.reserve(ids.size());
  for (const auto id : ids) {
    if (id == XCB_WINDOW_NONE) continue;
    const auto known = find(id);
    listed.push_back(known ? known : adopt(id));
  }
  std::vector<ClientWindowRef> missing;
  for (const auto& window : windows_) {
    if (std::find(ids.begin(), ids.end(), window->id) == ids.end()) missing.push_back(window);
  }
  windows_ = std::move(listed);
  listIsWhole_ = true;
  for (const auto& window : missing) {
    if (isRetained(*window)) {
      windows_.push_back(window);
      listIsWhole_ = false;
    } else {
      drop(window);
    }
  }
  changes_.windows = true;
  hasList_ = true;
}

ClientWindowRef ClientModel::adopt(xcb_window_t id) {
  auto window = std::make_shared<ClientWindow>();
  window->id = id;
  byId_.emplace(id, window);
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.xcb(), id, XCB_CW_EVENT_MASK, &mask);
  window->stale.set();
  stale_.push_back(window);
  if (hasList_) changes_.shown.push_back(window);
  changes_.appeared.push_back(window);
  return window;
}

void ClientModel::drop(const ClientWindowRef& window) {
  window->isGone = true;
  byId_.erase(window->id);
  std::erase(windows_, window);
  changes_.windows = changes_.vanished = true;
  changes_.struts |= window->strut || window->strutPartial;
}

void ClientModel::refreshWindows() {
  const auto stale = std::exchange(stale_, {});
  std::vector<WindowFetch> fetches;
  fetches.reserve(stale.size());
  for (const auto& window : stale) {
    const auto fields = std::exchange(window->stale, {});
    if (!window->isGone) fetches.push_back(requestFields(window, fields));
  }
  for (const auto& fetch : fetches) {
    for (const auto& [property, cookie] : fetch.properties) collectProperty(fetch.window, *property, cookie);
    if (fetch.geometry) collectSize(fetch.window, *fetch.geometry);
    if (fetch.origin) collectPosition(fetch.window, *fetch.origin);
    if (fetch.client) collectClient(*fetch.window, *fetch.client);
  }
}

ClientModel::WindowFetch ClientModel::requestFields(const ClientWindowRef& window, const std::bitset<fieldCount>& fields) const {
  auto* xcb = connection_.xcb();
  WindowFetch fetch{window, {}, {}, {}, {}};
  for (const auto& property : properties_) {
    if (!fields.test(index(property.field))) continue;
    fetch.properties.emplace_back(
        &property, xcb_get_property(xcb, 0, window->id, property.atom, XCB_GET_PROPERTY_TYPE_ANY, 0, property.maximumLength));
  }
  if (fields.test(index(Field::size))) fetch.geometry = xcb_get_geometry(xcb, window->id);
  if (fields.test(index(Field::position))) fetch.origin = xcb_translate_coordinates(xcb, window->id, connection_.root(), 0, 0);
  if (fields.test(index(Field::clientId)) && connection_.extensions().resOpcode != 0) {
    const xcb_res_client_id_spec_t wanted{window->id, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    fetch.client = xcb_res_query_client_ids(xcb, 1, &wanted);
  }
  return fetch;
}

void ClientModel::collectProperty(const ClientWindowRef& window, const PropertyField& field, xcb_get_property_cookie_t cookie) {
  xcb_generic_error_t* error = nullptr;
  const Property property{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(connection_.xcb(), cookie, &error)}};
  const Reply<xcb_generic_error_t> owned{error};
  if (owned || window->isGone) return;
  const bool hadStrut = window->strut || window->strutPartial;
  const bool wasHidden = window->states.hidden;
  field.read(*window, property, connection_.atoms());
  changes_.struts |= hadStrut || window->strut || window->strutPartial;
  if (wasHidden && !window->states.hidden && window->iconRequest != IconRequest::restore) changes_.shown.push_back(window);
  fetched(window, field.field);
}

void ClientModel::collectSize(const ClientWindowRef& window, xcb_get_geometry_cookie_t cookie) {
  xcb_generic_error_t* error = nullptr;
  const Reply<xcb_get_geometry_reply_t> reply{xcb_get_geometry_reply(connection_.xcb(), cookie, &error)};
  const Reply<xcb_generic_error_t> owned{error};
  if (reply) {
    window->client.width = reply->width;
    window->client.height = reply->height;
  } else if (!window->isGone) {
    drop(window);
  }
}

void ClientModel::collectPosition(const ClientWindowRef& window, xcb_translate_coordinates_cookie_t cookie) {
  xcb_generic_error_t* error = nullptr;
  const Reply<xcb_translate_coordinates_reply_t> reply{xcb_translate_coordinates_reply(connection_.xcb(), cookie, &error)};
  const Reply<xcb_generic_error_t> owned{error};
  if (!reply) return;
  window->client.x = reply->dst_x;
  window->client.y = reply->dst_y;
  touch(window);
}

void ClientModel::collectClient(ClientWindow& window, xcb_res_query_client_ids_cookie_t cookie) {
  xcb_generic_error_t* error = nullptr;
  const Reply<xcb_res_query_client_ids_reply_t> reply{xcb_res_query_client_ids_reply(connection_.xcb(), cookie, &error)};
  const Reply<xcb_generic_error_t> owned{error};
  window.clientProcess = 0;
  if (!reply) return;
  for (auto it = xcb_res_query_client_ids_ids_iterator(reply.get()); it.rem > 0; xcb_res_client_id_value_next(&it)) {
    const bool isProcess = (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 && it.data->length >= sizeof(std::uint32_t);
    if (isProcess) window.clientProcess = *xcb_res_client_id_value_value(it.data);
  }
}

void ClientModel::fetched(const ClientWindowRef& window, Field field) {
  switch (field) {
    case Field::states:
    case Field::decoration:
    case Field::shadow:
      touch(window);
      changes_.windows = true;
      return;
    case Field::type:
    case Field::transientFor:
    case Field::desktop:
    case Field::role:
      changes_.windows = true;
      return;
    default:
      return;
  }
}

void ClientModel::findParents() {
  for (const auto& window : windows_) window->hasParent = window->transientFor != window->id && byId_.contains(window->transientFor);
}

void ClientModel::touch(const ClientWindowRef& window) { changes_.touched.push_back(window); }

ModelChanges ClientModel::takeChanges() { return std::exchange(changes_, {}); }

ClientWindowRef ClientModel::find(xcb_window_t id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : found->second;
}

}  // namespace tilora::x11
