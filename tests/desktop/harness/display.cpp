// Reading the state of a desktop, asking for changes, and waiting on events.
#include "harness/display.h"

#include <poll.h>
#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "harness/reply.h"

namespace tilora::harness {

namespace {

template <class T>
Reply<T> owned(T* reply) {
  return Reply<T>(reply);
}

constexpr std::uint32_t rootEvents = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint32_t windowEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE;

std::optional<WindowEvent::Kind> kindOf(int type) {
  switch (type) {
    case XCB_CONFIGURE_NOTIFY:
      return WindowEvent::Kind::configured;
    case XCB_MAP_NOTIFY:
      return WindowEvent::Kind::mapped;
    case XCB_UNMAP_NOTIFY:
      return WindowEvent::Kind::unmapped;
    case XCB_DESTROY_NOTIFY:
      return WindowEvent::Kind::destroyed;
    case XCB_REPARENT_NOTIFY:
      return WindowEvent::Kind::reparented;
    case XCB_PROPERTY_NOTIFY:
      return WindowEvent::Kind::property;
    case XCB_FOCUS_IN:
      return WindowEvent::Kind::focusIn;
    case XCB_FOCUS_OUT:
      return WindowEvent::Kind::focusOut;
    default:
      return std::nullopt;
  }
}

/// The entry for an event that the window itself reports, and for a change of area that the root reports; nothing for others.
std::optional<WindowEvent> windowEvent(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7f;
  const std::optional<WindowEvent::Kind> kind = kindOf(type);
  if (!kind) return std::nullopt;
  WindowEvent entry{
      .kind = *kind, .geometry = {}, .synthetic = (event.response_type & 0x80) != 0, .time = std::chrono::steady_clock::now()};
  if (type == XCB_PROPERTY_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    entry.window = change.window;
    entry.atom = change.atom;
    return entry;
  }
  if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT) {
    entry.window = reinterpret_cast<const xcb_focus_in_event_t&>(event).event;
    return entry;
  }
  // The structure events begin alike: who reports, then the window.
  const auto& structure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
  if (structure.event != structure.window && type != XCB_CONFIGURE_NOTIFY) return std::nullopt;
  entry.window = structure.window;
  if (type == XCB_CONFIGURE_NOTIFY) {
    const int border = structure.event == structure.window ? 0 : 2 * structure.border_width;
    entry.geometry = {structure.x, structure.y, structure.width + border, structure.height + border};
  }
  return entry;
}

std::set<std::string> namesOf(const std::vector<Monitor>& monitors) {
  std::set<std::string> names;
  for (const Monitor& monitor : monitors) names.insert(monitor.name);
  return names;
}

struct MonitorRequest {
  xcb_window_t root = XCB_WINDOW_NONE;
  xcb_atom_t name = XCB_ATOM_NONE;
  bool primary = false;
  PixelRect geometry;
  std::optional<xcb_randr_output_t> output;
};

/// RRSetMonitor, laid out by hand: libxcb 1.15 measures the request wrongly when it names an output, and closes the connection.
void sendMonitor(xcb_connection_t* connection, const MonitorRequest& request) {
  xcb_randr_monitor_info_t info{};
  info.name = request.name;
  info.primary = request.primary ? 1 : 0;
  info.nOutput = request.output ? 1 : 0;
  info.x = static_cast<std::int16_t>(request.geometry.x);
  info.y = static_cast<std::int16_t>(request.geometry.y);
  info.width = static_cast<std::uint16_t>(request.geometry.width);
  info.height = static_cast<std::uint16_t>(request.geometry.height);
  info.width_in_millimeters = static_cast<std::uint32_t>(request.geometry.width / 4);
  info.height_in_millimeters = static_cast<std::uint32_t>(request.geometry.height / 4);
  std::vector<std::uint8_t> bytes(8 + sizeof(info) + (request.output ? sizeof(*request.output) : 0));
  std::memcpy(bytes.data() + 4, &request.root, sizeof(request.root));
  std::memcpy(bytes.data() + 8, &info, sizeof(info));
  if (request.output) std::memcpy(bytes.data() + 8 + sizeof(info), &*request.output, sizeof(*request.output));
  // xcb wants two free entries before the parts that it is given.
  std::array<iovec, 3> parts = {{{nullptr, 0}, {nullptr, 0}, {bytes.data(), bytes.size()}}};
  const xcb_protocol_request_t protocol = {1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
  xcb_send_request(connection, 0, parts.data() + 2, &protocol);
}

}  // namespace

Display::Display(const std::string& name) {
  int number = 0;
  connection_ = xcb_connect(name.c_str(), &number);
  if (xcb_connection_has_error(connection_) != 0) {
    xcb_disconnect(connection_);
    throw std::runtime_error("no X server at " + name);
  }
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &rootEvents);
  helper_ = xcb_generate_id(connection_);
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  const std::array<std::uint32_t, 2> values = {1, mask};
  xcb_create_window(connection_, 0, helper_, root(), -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  if (const auto version = owned(xcb_randr_query_version_reply(connection_, xcb_randr_query_version(connection_, 1, 5), nullptr))) {
    xcb_randr_select_input(connection_, root(), XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
  }
  sync();
}

Display::~Display() { xcb_disconnect(connection_); }

PixelRect Display::rootGeometry() {
  const auto reply = owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, root()), nullptr));
  return reply ? PixelRect{0, 0, reply->width, reply->height} : PixelRect{};
}

xcb_atom_t Display::atom(std::string_view name) {
  if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
  const auto reply = owned(
      xcb_intern_atom_reply(connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
  if (!reply) throw std::runtime_error("the X server is gone");
  return atoms_.emplace(std::string(name), reply->atom).first->second;
}

std::string Display::atomName(xcb_atom_t atom) {
  const auto reply = owned(xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

void Display::sync() { owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)); }

xcb_timestamp_t Display::serverTime() {
  const xcb_atom_t name = atom("_TILORA_TEST_TIME");
  xcb_change_property(connection_, XCB_PROP_MODE_APPEND, helper_, name, XCB_ATOM_CARDINAL, 32, 0, nullptr);
  xcb_flush(connection_);
  while (const auto event = owned(xcb_wait_for_event(connection_))) {
    const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->window == helper_) return change->time;
    record(*event);
  }
  throw std::runtime_error("the X server is gone");
}

Display::PropertyValue Display::property(xcb_window_t window, std::string_view name) {
  const auto cookie = xcb_get_property(connection_, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1U << 16U);
  const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  return {reply->type, reply->format, {bytes, bytes + xcb_get_property_value_length(reply.get())}};
}

std::vector<std::uint32_t> Display::cardinals(xcb_window_t window, std::string_view name) {
  const PropertyValue value = property(window, name);
  if (value.format != 32) return {};
  std::vector<std::uint32_t> result(value.bytes.size() / 4);
  if (!result.empty()) std::memcpy(result.data(), value.bytes.data(), result.size() * 4);
  return result;
}

std::vector<std::string> Display::atoms(xcb_window_t window, std::string_view name) {
  std::vector<std::string> result;
  for (const std::uint32_t value : cardinals(window, name)) result.push_back(atomName(value));
  return result;
}

std::string Display::text(xcb_window_t window, std::string_view name) {
  const PropertyValue value = property(window, name);
  if (value.format != 8) return {};
  return {value.bytes.begin(), value.bytes.end()};
}

bool Display::hasProperty(xcb_window_t window, std::string_view name) { return property(window, name).type != XCB_ATOM_NONE; }

std::set<std::string> Display::propertyNames(xcb_window_t window) {
  std::set<std::string> names;
  const auto reply = owned(xcb_list_properties_reply(connection_, xcb_list_properties(connection_, window), nullptr));
  if (!reply) return names;
  const xcb_atom_t* list = xcb_list_properties_atoms(reply.get());
  for (int index = 0; index < xcb_list_properties_atoms_length(reply.get()); ++index) names.insert(atomName(list[index]));
  return names;
}

void Display::setCardinals(xcb_window_t window, std::string_view name, std::string_view type, const std::vector<std::uint32_t>& values) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 32, static_cast<std::uint32_t>(values.size()),
                      values.data());
  sync();
}

Extents Display::extents(xcb_window_t window, std::string_view name) {
  const std::vector<std::uint32_t> values = cardinals(window, name);
  if (values.size() < 4) return {};
  return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]), static_cast<int>(values[3])};
}

bool Display::hasState(xcb_window_t window, std::string_view state) {
  const std::vector<std::uint32_t> states = cardinals(window, "_NET_WM_STATE");
  return std::find(states.begin(), states.end(), atom(state)) != states.end();
}

std::optional<PixelRect> Display::clientArea(xcb_window_t window) {
  const auto geometryCookie = xcb_get_geometry(connection_, window);
  const auto originCookie = xcb_translate_coordinates(connection_, window, root(), 0, 0);
  const auto geometry = owned(xcb_get_geometry_reply(connection_, geometryCookie, nullptr));
  const auto origin = owned(xcb_translate_coordinates_reply(connection_, originCookie, nullptr));
  if (!geometry || !origin) return std::nullopt;
  return PixelRect{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

std::optional<PixelRect> Display::frame(xcb_window_t window) {
  const std::optional<PixelRect> area = clientArea(window);
  if (!area) return std::nullopt;
  const Extents added = extents(window, "_NET_FRAME_EXTENTS");
  const Extents shadows = extents(window, "_GTK_FRAME_EXTENTS");
  const Extents edges = {added.left - shadows.left, added.right - shadows.right, added.top - shadows.top, added.bottom - shadows.bottom};
  return PixelRect{area->x - edges.left, area->y - edges.top, area->width + edges.left + edges.right,
                   area->height + edges.top + edges.bottom};
}

xcb_window_t Display::outermost(xcb_window_t window) {
  while (true) {
    const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree) return XCB_WINDOW_NONE;
    if (tree->parent == root() || tree->parent == XCB_WINDOW_NONE) return window;
    window = tree->parent;
  }
}

std::optional<PixelRect> Display::outermostArea(xcb_window_t window) {
  const auto geometry = owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, outermost(window)), nullptr));
  if (!geometry) return std::nullopt;
  const int border = 2 * geometry->border_width;
  return PixelRect{geometry->x, geometry->y, geometry->width + border, geometry->height + border};
}

bool Display::viewable(xcb_window_t window) {
  const auto reply = owned(xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

int Display::shownOnRoot() {
  const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root()), nullptr));
  if (!tree) return 0;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return static_cast<int>(std::count_if(children, children + xcb_query_tree_children_length(tree.get()),
                                        [this](xcb_window_t child) { return viewable(child); }));
}

xcb_window_t Display::activeWindow() {
  const std::vector<std::uint32_t> value = cardinals(root(), "_NET_ACTIVE_WINDOW");
  return value.empty() ? xcb_window_t{XCB_WINDOW_NONE} : value.front();
}

xcb_window_t Display::focusedWindow() {
  const auto reply = owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<xcb_window_t> Display::clientList() { return cardinals(root(), "_NET_CLIENT_LIST"); }

std::vector<xcb_window_t> Display::stackingOrder() {
  std::map<xcb_window_t, xcb_window_t> clients;
  for (const xcb_window_t window : clientList()) clients[outermost(window)] = window;
  std::vector<xcb_window_t> order;
  const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root()), nullptr));
  if (!tree) return order;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
    if (const auto client = clients.find(children[index]); client != clients.end()) order.push_back(client->second);
  }
  return order;
}

std::vector<Monitor> Display::monitors() {
  std::vector<Monitor> result;
  const auto reply = owned(xcb_randr_get_monitors_reply(connection_, xcb_randr_get_monitors(connection_, root(), 1), nullptr));
  if (!reply) return result;
  for (auto entry = xcb_randr_get_monitors_monitors_iterator(reply.get()); entry.rem > 0; xcb_randr_monitor_info_next(&entry)) {
    const xcb_randr_monitor_info_t& info = *entry.data;
    result.push_back({atomName(info.name), {info.x, info.y, info.width, info.height}, info.primary != 0});
  }
  return result;
}

void Display::collectStruts(xcb_window_t window, int depth, std::vector<Strut>& struts) {
  const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
  if (!tree || depth == 0) return;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
    const std::vector<std::uint32_t> v = cardinals(children[index], "_NET_WM_STRUT_PARTIAL");
    if (v.size() >= 12 && viewable(children[index])) {
      const auto at = [&v](std::size_t place) { return static_cast<int>(v[place]); };
      struts.push_back({at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7), at(8), at(9), at(10), at(11)});
    }
    collectStruts(children[index], depth - 1, struts);
  }
}

PixelRect Display::visibleFrame(const PixelRect& monitor) {
  std::vector<Strut> struts;
  collectStruts(root(), 3, struts);
  const PixelRect whole = rootGeometry();
  int left = monitor.x, top = monitor.y, right = monitor.right(), bottom = monitor.bottom();
  for (const Strut& strut : struts) {
    const bool besideRows = strut.leftStart < monitor.bottom() && strut.leftEnd >= monitor.y;
    const bool besideRightRows = strut.rightStart < monitor.bottom() && strut.rightEnd >= monitor.y;
    const bool overColumns = strut.topStart < monitor.right() && strut.topEnd >= monitor.x;
    const bool underColumns = strut.bottomStart < monitor.right() && strut.bottomEnd >= monitor.x;
    if (strut.left > monitor.x && strut.left < monitor.right() && besideRows) left = std::max(left, strut.left);
    if (const int edge = whole.width - strut.right; strut.right > 0 && edge > monitor.x && edge < monitor.right() && besideRightRows)
      right = std::min(right, edge);
    if (strut.top > monitor.y && strut.top < monitor.bottom() && overColumns) top = std::max(top, strut.top);
    if (const int edge = whole.height - strut.bottom; strut.bottom > 0 && edge > monitor.y && edge < monitor.bottom() && underColumns)
      bottom = std::min(bottom, edge);
  }
  // A window manager's own panel has no strut; with one monitor the work area tells of it.
  const std::vector<std::uint32_t> area = cardinals(root(), "_NET_WORKAREA");
  if (monitors().size() == 1 && area.size() >= 4) {
    left = std::max(left, static_cast<int>(area[0]));
    top = std::max(top, static_cast<int>(area[1]));
    right = std::min(right, static_cast<int>(area[0] + area[2]));
    bottom = std::min(bottom, static_cast<int>(area[1] + area[3]));
  }
  return {left, top, right - left, bottom - top};
}

xcb_window_t Display::selectionOwner(std::string_view selection) {
  const auto reply = owned(xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, atom(selection)), nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::string Display::windowManagerName() {
  const std::vector<std::uint32_t> check = cardinals(root(), "_NET_SUPPORTING_WM_CHECK");
  if (check.empty() || check.front() == XCB_WINDOW_NONE) return {};
  const std::vector<std::uint32_t> echo = cardinals(check.front(), "_NET_SUPPORTING_WM_CHECK");
  if (echo.empty() || echo.front() != check.front()) return {};
  std::string name = text(check.front(), "_NET_WM_NAME");
  return name.empty() ? "unnamed" : name;
}

void Display::setMonitors(const std::vector<Monitor>& wanted) {
  const std::set<std::string> kept = namesOf(wanted);
  for (const Monitor& old : monitors()) {
    if (!kept.contains(old.name)) xcb_randr_delete_monitor(connection_, root(), atom(old.name));
  }
  const auto resources =
      owned(xcb_randr_get_screen_resources_reply(connection_, xcb_randr_get_screen_resources(connection_, root()), nullptr));
  const bool hasOutput = resources && xcb_randr_get_screen_resources_outputs_length(resources.get()) > 0;
  for (std::size_t index = 0; index < wanted.size(); ++index) {
    const bool first = index == 0;
    MonitorRequest request = {
        .root = root(), .name = atom(wanted[index].name), .primary = first, .geometry = wanted[index].geometry, .output = {}};
    if (first && hasOutput) request.output = *xcb_randr_get_screen_resources_outputs(resources.get());
    sendMonitor(connection_, request);
  }
  sync();
}

void Display::send(xcb_window_t receiver, std::uint32_t mask, xcb_window_t window, std::string_view type,
                   const std::vector<std::uint32_t>& data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom(type);
  for (std::size_t index = 0; index < data.size() && index < 5; ++index) message.data.data32[index] = data[index];
  std::array<char, 32> bytes{};
  std::memcpy(bytes.data(), &message, sizeof(message));
  xcb_send_event(connection_, 0, receiver, mask, bytes.data());
  xcb_flush(connection_);
}

void Display::sendRootMessage(xcb_window_t window, std::string_view type, const std::vector<std::uint32_t>& data) {
  send(root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, window, type, data);
}

bool Display::waitForProgram(xcb_window_t window) {
  const xcb_timestamp_t time = serverTime();
  send(window, XCB_EVENT_MASK_NO_EVENT, window, "WM_PROTOCOLS", {atom("_NET_WM_PING"), time, window});
  return waitUntil([&] { return answeredPing_ == time; });
}

void Display::activate(xcb_window_t window) { sendRootMessage(window, "_NET_ACTIVE_WINDOW", {2, serverTime(), XCB_WINDOW_NONE}); }

void Display::minimise(xcb_window_t window) { sendRootMessage(window, "WM_CHANGE_STATE", {3}); }

void Display::changeState(xcb_window_t window, bool add, std::string_view first, std::string_view second) {
  sendRootMessage(window, "_NET_WM_STATE", {add ? 1U : 0U, atom(first), second.empty() ? 0U : atom(second), 2});
}

void Display::close(xcb_window_t window) { sendRootMessage(window, "_NET_CLOSE_WINDOW", {serverTime(), 2}); }

void Display::moveToDesktop(xcb_window_t window, std::uint32_t desktop) { sendRootMessage(window, "_NET_WM_DESKTOP", {desktop, 2}); }

void Display::showDesktop(std::uint32_t desktop) { sendRootMessage(root(), "_NET_CURRENT_DESKTOP", {desktop, serverTime()}); }

std::uint32_t Display::currentDesktop() {
  const std::vector<std::uint32_t> value = cardinals(root(), "_NET_CURRENT_DESKTOP");
  return value.empty() ? 0 : value.front();
}

void Display::watch(xcb_window_t window) {
  xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &windowEvents);
  sync();
}

const std::vector<WindowEvent>& Display::events() {
  sync();
  takeEvents();
  return events_;
}

void Display::clearEvents() {
  sync();
  takeEvents();
  events_.clear();
}

void Display::record(const xcb_generic_event_t& event) {
  woken_ = true;
  if ((event.response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == atom("WM_PROTOCOLS") && message.data.data32[0] == atom("_NET_WM_PING")) answeredPing_ = message.data.data32[1];
  }
  const std::optional<WindowEvent> entry = windowEvent(event);
  if (entry && entry->window != root() && entry->window != helper_) events_.push_back(*entry);
}

void Display::takeEvents() {
  while (const auto event = owned(xcb_poll_for_event(connection_))) record(*event);
}

bool Display::waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (true) {
    woken_ = false;
    if (holds()) return true;
    takeEvents();
    while (!woken_) {
      if (xcb_connection_has_error(connection_) != 0) return false;
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
      if (left.count() <= 0 || !waitReadable(xcb_get_file_descriptor(connection_), left)) return holds();
      takeEvents();
    }
    if (std::chrono::steady_clock::now() > end) return holds();
  }
}

std::string Display::describe() {
  std::ostringstream text;
  text << "window manager " << windowManagerName() << ", active " << std::hex << activeWindow() << ", desktop " << currentDesktop()
       << std::dec << "\n";
  for (const xcb_window_t window : clientList()) {
    text << "  " << std::hex << window << std::dec << " \"" << this->text(window, "_NET_WM_NAME") << "\"";
    if (const auto area = frame(window)) text << " frame " << *area;
    text << (viewable(window) ? " viewable" : " not viewable");
    for (const std::string& state : atoms(window, "_NET_WM_STATE")) text << " " << state;
    for (const std::string& name : propertyNames(window)) {
      if (name.starts_with("_TILORA")) text << " " << name;
    }
    text << "\n";
  }
  return text.str();
}

}  // namespace tilora::harness
