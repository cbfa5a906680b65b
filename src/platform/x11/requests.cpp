// Putting the client messages together.
#include "platform/x11/requests.h"

#include <array>

namespace tilora::x11 {
namespace {

constexpr std::uint32_t sourcePager = 2;
constexpr std::uint32_t iconicState = 3;

void sendToRoot(Connection& connection, xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = type;
  for (std::size_t i = 0; i < data.size(); ++i) event.data.data32[i] = data[i];
  xcb_send_event(connection.xcb(), 0, connection.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
}

void requestWithoutStates(Connection& connection, xcb_window_t window, xcb_atom_t first, xcb_atom_t second) {
  constexpr std::uint32_t remove = 0;
  sendToRoot(connection, window, connection.atoms()._NET_WM_STATE, {remove, first, second, sourcePager, 0});
}

}  // namespace

void requestFrame(Connection& connection, xcb_window_t window, const PixelRect& client) {
  constexpr std::uint32_t positionGiven = 3U << 8;
  constexpr std::uint32_t sizeGiven = 3U << 10;
  const std::uint32_t flags = XCB_GRAVITY_STATIC | positionGiven | sizeGiven | (sourcePager << 12);
  sendToRoot(connection, window, connection.atoms()._NET_MOVERESIZE_WINDOW,
             {flags, static_cast<std::uint32_t>(client.x), static_cast<std::uint32_t>(client.y), static_cast<std::uint32_t>(client.width),
              static_cast<std::uint32_t>(client.height)});
}

void requestUnmaximize(Connection& connection, xcb_window_t window) {
  const Atoms& atoms = connection.atoms();
  requestWithoutStates(connection, window, atoms._NET_WM_STATE_MAXIMIZED_HORZ, atoms._NET_WM_STATE_MAXIMIZED_VERT);
}

void requestNotFullscreen(Connection& connection, xcb_window_t window) {
  requestWithoutStates(connection, window, connection.atoms()._NET_WM_STATE_FULLSCREEN, XCB_ATOM_NONE);
}

void requestIconify(Connection& connection, xcb_window_t window) {
  sendToRoot(connection, window, connection.atoms().WM_CHANGE_STATE, {iconicState, 0, 0, 0, 0});
}

void requestActivation(Connection& connection, xcb_window_t window, xcb_timestamp_t time) {
  sendToRoot(connection, window, connection.atoms()._NET_ACTIVE_WINDOW, {sourcePager, time, 0, 0, 0});
}

void requestDesktop(Connection& connection, xcb_window_t window, std::uint32_t desktop) {
  sendToRoot(connection, window, connection.atoms()._NET_WM_DESKTOP, {desktop, sourcePager, 0, 0, 0});
}

void requestCurrentDesktop(Connection& connection, std::uint32_t desktop, xcb_timestamp_t time) {
  sendToRoot(connection, connection.root(), connection.atoms()._NET_CURRENT_DESKTOP, {desktop, time, 0, 0, 0});
}

void requestRaise(Connection& connection, xcb_window_t window) {
  sendToRoot(connection, window, connection.atoms()._NET_RESTACK_WINDOW, {sourcePager, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE, 0, 0});
}

void requestFrameExtents(Connection& connection, xcb_window_t window) {
  sendToRoot(connection, window, connection.atoms()._NET_REQUEST_FRAME_EXTENTS, {0, 0, 0, 0, 0});
}

}  // namespace tilora::x11
