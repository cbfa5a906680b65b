// Taking and defending the instance selection.
#include "platform/x11/instance.h"

#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/x11/event_type.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {

namespace {

/// Holds up every other client's requests.
class ServerGrab {
 public:
  explicit ServerGrab(xcb_connection_t* xcb) : xcb_(xcb) { xcb_grab_server(xcb_); }
  ServerGrab(const ServerGrab&) = delete;
  ServerGrab& operator=(const ServerGrab&) = delete;
  ~ServerGrab() {
    xcb_ungrab_server(xcb_);
    xcb_flush(xcb_);
  }

 private:
  xcb_connection_t* xcb_;
};

xcb_window_t createWindow(Connection& connection) {
  xcb_connection_t* xcb = connection.xcb();
  const xcb_window_t window = xcb_generate_id(xcb);
  const std::array<std::uint32_t, 2> values = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(xcb, 0, window, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  return window;
}

/// The server's time, as a change of one of the window's properties reports it. Nothing when the connection breaks or
/// the server refuses the change.
std::optional<xcb_timestamp_t> serverTime(Connection& connection, xcb_window_t window) {
  const xcb_atom_t property = connection.atoms()._TILORA_TIME;
  const auto cookie = xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, window, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
  connection.flush();
  while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection.xcb())}) {
    if (event->response_type == 0 && event->full_sequence == cookie.sequence) break;  // an error
    if (typeOf(*event) != XCB_PROPERTY_NOTIFY) continue;
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
    if (notify.window == window && notify.atom == property) return notify.time;
  }
  return std::nullopt;
}

/// Nothing when the server does not answer.
std::optional<xcb_window_t> owner(Connection& connection, xcb_atom_t selection) {
  const auto cookie = xcb_get_selection_owner(connection.xcb(), selection);
  const Reply<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(connection.xcb(), cookie, nullptr)};
  if (!reply) return std::nullopt;
  return reply->owner;
}

void sendMessage(Connection& connection, xcb_window_t window, std::uint32_t eventMask, const xcb_client_message_event_t& message) {
  xcb_send_event(connection.xcb(), 0, window, eventMask, reinterpret_cast<const char*>(&message));
  connection.flush();
}

xcb_client_message_event_t message(xcb_window_t window, xcb_atom_t type, xcb_timestamp_t time) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = type;
  message.data.data32[0] = time;
  return message;
}

/// The owner of the selection after an attempt to take it while nobody has it; nothing when the server does not answer.
std::optional<xcb_window_t> ownerAfterTrying(Connection& connection, xcb_atom_t selection, xcb_window_t window, xcb_timestamp_t time) {
  const ServerGrab grab(connection.xcb());
  const auto current = owner(connection, selection);
  if (!current || *current != XCB_WINDOW_NONE) return current;
  xcb_set_selection_owner(connection.xcb(), window, selection, time);
  return owner(connection, selection);
}

void refuse(Connection& connection, const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = XCB_ATOM_NONE;
  // An event is 32 bytes on the wire; this one's structure is shorter.
  std::array<char, 32> bytes{};
  std::memcpy(bytes.data(), &notify, sizeof(notify));
  xcb_send_event(connection.xcb(), 0, request.requestor, 0, bytes.data());
  connection.flush();
}

}  // namespace

Instance::Start Instance::acquire(Connection& connection) {
  const xcb_atom_t selection = connection.atoms()._TILORA_INSTANCE;
  const xcb_window_t window = createWindow(connection);
  std::unique_ptr<Instance> instance(new Instance(connection, selection, window));
  // The server ignores a time older than the last change: another copy that came and went in between needs a second try.
  constexpr int tries = 3;
  for (int i = 0; i < tries; ++i) {
    const auto time = serverTime(connection, window);
    if (!time) break;
    const auto current = ownerAfterTrying(connection, selection, window, *time);
    if (!current) break;
    if (*current == window) {
      auto announcement = message(connection.root(), connection.atoms().MANAGER, *time);
      announcement.data.data32[1] = selection;
      announcement.data.data32[2] = window;
      sendMessage(connection, connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, announcement);
      return {.outcome = Outcome::acquired, .instance = std::move(instance)};
    }
    if (*current != XCB_WINDOW_NONE) {
      sendMessage(connection, *current, XCB_EVENT_MASK_NO_EVENT, message(*current, selection, *time));
      // A server drops what a client has sent when it finds the connection closed; this copy will end now.
      owner(connection, selection);
      return {.outcome = Outcome::alreadyRunning, .instance = nullptr};
    }
  }
  return {.outcome = Outcome::failed, .instance = nullptr};
}

Instance::~Instance() {
  xcb_destroy_window(connection_.xcb(), window_);
  connection_.flush();
}

bool Instance::handleEvent(const xcb_generic_event_t& event) {
  switch (typeOf(event)) {
    case XCB_CLIENT_MESSAGE: {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
      if (message.window != window_ || message.type != selection_ || message.format != 32) return false;
      if (const auto callback = askedToShow_) callback();
      return true;
    }
    case XCB_SELECTION_CLEAR: {
      const auto& clear = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
      if (clear.selection != selection_ || clear.owner != window_) return false;
      if (const auto callback = lost_) callback();
      return true;
    }
    case XCB_SELECTION_REQUEST: {
      const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
      if (request.selection != selection_ || request.owner != window_) return false;
      refuse(connection_, request);
      return true;
    }
    default:
      return false;
  }
}

}  // namespace tilora::x11
