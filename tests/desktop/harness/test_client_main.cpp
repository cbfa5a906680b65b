// tilora-test-client: an application that opens the windows it is told to. It reads one JSON object a line on standard input and answers
// each with one on standard output.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "harness/reply.h"

namespace {

using nlohmann::json;
using tilora::harness::Reply;

/// A window that refuses for ever, and a window manager that insists, would leave the machine no time for anything else.
constexpr int mostRefusals = 200;

struct OpenWindow {
  std::vector<std::uint32_t> shadows;
  std::vector<int> keys;
  /// The size that it takes back whenever it is given another one; all zero: it takes what it gets.
  std::array<std::uint32_t, 2> ownSize = {};
  /// The place that it takes back, in root coordinates.
  std::optional<std::array<std::int32_t, 2>> ownPlace;
  /// How often it will refuse.
  int refusals = mostRefusals;
};

class Client {
 public:
  Client() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) std::exit(1);
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { xcb_disconnect(connection_); }

  int descriptor() const { return xcb_get_file_descriptor(connection_); }
  bool failed() const { return xcb_connection_has_error(connection_) != 0; }

  json answer(const json& request) {
    const std::string operation = request.at("op");
    if (operation == "open") return open(request);
    if (operation == "grabKey") return grabKey(request);
    const xcb_window_t window = request.at("window");
    if (operation == "map") xcb_map_window(connection_, window);
    if (operation == "withdraw") withdraw(window);
    if (operation == "destroy") destroy(window);
    if (operation == "setTitle") setTitle(window, request.at("title"));
    if (operation == "setStrut") setCardinals(window, "_NET_WM_STRUT_PARTIAL", "CARDINAL", request.at("strut"));
    if (operation == "configure") configure(window, request.at("area"));
    sync();
    handleEvents();
    if (operation == "keysPressed") return {{"keys", windows_[window].keys}};
    return json::object();
  }

  void handleEvents() {
    while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) handle(*event);
    xcb_flush(connection_);
  }

 private:
  xcb_atom_t atom(const std::string& name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection_, cookie, nullptr)};
    return atoms_.emplace(name, reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE}).first->second;
  }

  void sync() { Reply<xcb_get_input_focus_reply_t>{xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)}; }

  void setCardinals(xcb_window_t window, const std::string& property, const std::string& type, const std::vector<std::uint32_t>& values) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
  }

  void setText(xcb_window_t window, const std::string& property, const std::string& type, const std::string& text) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8, static_cast<std::uint32_t>(text.size()),
                        text.data());
  }

  void setTitle(xcb_window_t window, const std::string& title) {
    setText(window, "_NET_WM_NAME", "UTF8_STRING", title);
    setText(window, "WM_NAME", "STRING", title);
  }

  json open(const json& request) {
    const std::array<int, 4> area = request.at("area");
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 3> values = {
        0x003060a0U + static_cast<std::uint32_t>(windows_.size()) * 0x201810U, request.at("overrideRedirect").get<bool>() ? 1U : 0U,
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, static_cast<std::int16_t>(area[0]),
                      static_cast<std::int16_t>(area[1]), static_cast<std::uint16_t>(area[2]), static_cast<std::uint16_t>(area[3]), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    windows_[window] = {};
    if (request.at("stubborn").get<bool>()) {
      windows_[window].ownSize = {static_cast<std::uint32_t>(area[2]), static_cast<std::uint32_t>(area[3])};
    }
    if (request.at("immovable").get<bool>()) {
      windows_[window].ownPlace = {area[0], area[1]};
    }
    describeApplication(window, request);
    describeWindow(window, request);
    setSizeHints(window, request);
    if (request.at("mapped").get<bool>()) xcb_map_window(connection_, window);
    sync();
    return {{"window", window}};
  }

  /// The properties that say whose window it is.
  void describeApplication(xcb_window_t window, const json& request) {
    const std::string instance = request.at("instance");
    const std::string className = request.at("class");
    if (!instance.empty() || !className.empty()) setText(window, "WM_CLASS", "STRING", instance + '\0' + className + '\0');
    if (request.at("declaresProcess").get<bool>()) {
      setCardinals(window, "_NET_WM_PID", "CARDINAL", {request.value("processId", static_cast<std::uint32_t>(::getpid()))});
    }
    std::array<char, 256> host{};
    ::gethostname(host.data(), host.size() - 1);
    const std::string machine = request.at("machine");
    setText(window, "WM_CLIENT_MACHINE", "STRING", machine.empty() ? std::string(host.data()) : machine);
    if (const xcb_window_t leader = request.at("leader"); leader != XCB_WINDOW_NONE)
      setCardinals(window, "WM_CLIENT_LEADER", "WINDOW", {leader});
  }

  void describeWindow(xcb_window_t window, const json& request) {
    setTitle(window, request.at("title"));
    if (const std::string role = request.at("role"); !role.empty()) setText(window, "WM_WINDOW_ROLE", "STRING", role);
    if (const std::string type = request.at("type"); !type.empty()) {
      setCardinals(window, "_NET_WM_WINDOW_TYPE", "ATOM", {atom("_NET_WM_WINDOW_TYPE_" + type)});
    }
    setCardinals(window, "WM_PROTOCOLS", "ATOM", {atom("WM_DELETE_WINDOW"), atom("_NET_WM_PING")});
    // WM_HINTS: takes the keyboard (InputHint), starts in NormalState.
    setCardinals(window, "WM_HINTS", "WM_HINTS", {3, 1, 1, 0, 0, 0, 0, 0, 0});
    if (const xcb_window_t parent = request.at("transientFor"); parent != XCB_WINDOW_NONE)
      setCardinals(window, "WM_TRANSIENT_FOR", "WINDOW", {parent});
    std::vector<std::uint32_t> states;
    for (const std::string state : request.at("states")) states.push_back(atom("_NET_WM_STATE_" + state));
    if (!states.empty()) setCardinals(window, "_NET_WM_STATE", "ATOM", states);
    const std::vector<std::uint32_t> strut = request.at("strut");
    if (std::any_of(strut.begin(), strut.end(), [](std::uint32_t value) { return value != 0; }))
      setCardinals(window, "_NET_WM_STRUT_PARTIAL", "CARDINAL", strut);
    if (request.at("undecorated").get<bool>() || request.contains("shadows"))
      setCardinals(window, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
    if (request.contains("shadows")) {
      windows_[window].shadows = request.at("shadows").get<std::vector<std::uint32_t>>();
      setCardinals(window, "_GTK_FRAME_EXTENTS", "CARDINAL", windows_[window].shadows);
    }
  }

  /// WM_NORMAL_HINTS as ICCCM 4.1.2.3 lays it out: 18 numbers.
  void setSizeHints(xcb_window_t window, const json& request) {
    enum : std::uint32_t { userPosition = 1, programSize = 8, minimum = 16, maximum = 32, increment = 64, base = 256, gravity = 512 };
    std::vector<std::uint32_t> hints(18, 0);
    const std::array<std::uint32_t, 4> area = request.at("area");
    std::copy(area.begin(), area.end(), hints.begin() + 1);
    hints[0] = programSize | (request.at("positioned").get<bool>() ? userPosition : 0U);
    const auto put = [&hints, &request](const char* name, std::size_t place, std::uint32_t flag) {
      const std::array<std::uint32_t, 2> value = request.at(name);
      if (value[0] == 0 && value[1] == 0) return;
      hints[0] |= flag;
      hints[place] = value[0];
      hints[place + 1] = value[1];
    };
    put("minimum", 5, minimum);
    put("maximum", 7, maximum);
    put("increment", 9, increment);
    put("base", 15, base);
    if (const std::uint32_t value = request.at("gravity"); value != 0) {
      hints[0] |= gravity;
      hints[17] = value;
    }
    setCardinals(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
  }

  json grabKey(const json& request) {
    const auto cookie = xcb_grab_key_checked(connection_, 1, screen_->root, request.at("modifiers"), request.at("keycode"),
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_generic_error_t> error{xcb_request_check(connection_, cookie)};
    return {{"granted", error == nullptr}};
  }

  /// Unmaps a window and tells the window manager so (ICCCM 4.1.4).
  void withdraw(xcb_window_t window) {
    xcb_unmap_window(connection_, window);
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = screen_->root;
    event.window = window;
    std::array<char, 32> bytes{};
    std::copy_n(reinterpret_cast<const char*>(&event), sizeof(event), bytes.begin());
    xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, bytes.data());
  }

  void destroy(xcb_window_t window) {
    xcb_destroy_window(connection_, window);
    windows_.erase(window);
  }

  void configure(xcb_window_t window, const std::array<std::int32_t, 4>& area) {
    std::array<std::uint32_t, 4> values{};
    std::copy(area.begin(), area.end(), values.begin());
    xcb_configure_window(connection_, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
  }

  void handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
      case XCB_KEY_PRESS: {
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        if (const auto window = windows_.find(press.event); window != windows_.end()) window->second.keys.push_back(press.detail);
        return;
      }
      case XCB_CONFIGURE_NOTIFY:
        keepPlace(event);
        return keepSize(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
      case XCB_CLIENT_MESSAGE:
        return obey(reinterpret_cast<const xcb_client_message_event_t&>(event));
      case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.atom == atom("_NET_WM_STATE")) followState(change.window);
        return;
      }
      default:
        return;
    }
  }

  /// Just what the window manager tells is in root coordinates (ICCCM 4.1.5).
  void keepPlace(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentByAClient = 0x80;
    const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    const auto found = windows_.find(change.window);
    if (found == windows_.end() || !found->second.ownPlace || (event.response_type & sentByAClient) == 0) return;
    const std::array<std::int32_t, 2>& place = *found->second.ownPlace;
    if ((change.x == place[0] && change.y == place[1]) || --found->second.refusals < 0) return;
    xcb_configure_window(connection_, change.window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
  }

  void keepSize(const xcb_configure_notify_event_t& change) {
    const auto found = windows_.find(change.window);
    if (found == windows_.end() || found->second.ownSize[0] == 0) return;
    const std::array<std::uint32_t, 2>& size = found->second.ownSize;
    if ((change.width == size[0] && change.height == size[1]) || --found->second.refusals < 0) return;
    xcb_configure_window(connection_, change.window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
  }

  void obey(const xcb_client_message_event_t& message) {
    if (message.type != atom("WM_PROTOCOLS")) return;
    if (message.data.data32[0] == atom("WM_DELETE_WINDOW")) destroy(message.window);
    if (message.data.data32[0] == atom("_NET_WM_PING")) {
      xcb_client_message_event_t pong = message;
      pong.window = screen_->root;
      xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                     reinterpret_cast<const char*>(&pong));
    }
  }

  /// A window that draws its own frame has no shadows while it fills its screen.
  void followState(xcb_window_t window) {
    const auto found = windows_.find(window);
    if (found == windows_.end() || found->second.shadows.empty()) return;
    const auto cookie = xcb_get_property(connection_, 0, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 64);
    const Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(connection_, cookie, nullptr)};
    if (!reply) return;
    const auto* states = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    const auto* end = states + xcb_get_property_value_length(reply.get()) / 4;
    const auto filling = [this](xcb_atom_t state) {
      return state == atom("_NET_WM_STATE_MAXIMIZED_VERT") || state == atom("_NET_WM_STATE_FULLSCREEN");
    };
    const bool filled = std::any_of(states, end, filling);
    setCardinals(window, "_GTK_FRAME_EXTENTS", "CARDINAL", filled ? std::vector<std::uint32_t>(4, 0) : found->second.shadows);
  }

  xcb_connection_t* connection_;
  xcb_screen_t* screen_ = nullptr;
  std::map<std::string, xcb_atom_t> atoms_;
  std::map<xcb_window_t, OpenWindow> windows_;
};

/// Answers every complete line of `pending`; false when the input is at its end.
bool answerRequests(Client& client, std::string& pending) {
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
  if (count <= 0) return false;
  pending.append(buffer.data(), static_cast<std::size_t>(count));
  for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos; pending.erase(0, end + 1)) {
    std::cout << client.answer(json::parse(pending.substr(0, end))).dump() << std::endl;
  }
  return true;
}

}  // namespace

int main() {
  Client client;
  std::string pending;
  while (!client.failed()) {
    client.handleEvents();
    std::array<pollfd, 2> inputs = {{{STDIN_FILENO, POLLIN, 0}, {client.descriptor(), POLLIN, 0}}};
    if (::poll(inputs.data(), inputs.size(), -1) < 0) return 1;
    if (inputs[0].revents != 0 && !answerRequests(client, pending)) return 0;
  }
  return 1;
}
