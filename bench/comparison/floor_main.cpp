// A client that answers key presses with requests that were decided beforehand. Each argument is "KEYCODE REQUEST WINDOW [X Y WIDTH
// HEIGHT]"; KEYCODE is grabbed with Alt and Shift, and its requests are sent in the order of the arguments.
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/x11/connection.h"
#include "platform/x11/reply.h"
#include "platform/x11/requests.h"

namespace {

using namespace tilora::x11;

struct Request {
  std::string kind;
  xcb_window_t window = XCB_WINDOW_NONE;
  PixelRect client;
};

void send(Connection& connection, const Request& request, xcb_timestamp_t time) {
  if (request.kind == "frame") requestFrame(connection, request.window, request.client);
  if (request.kind == "map") xcb_map_window(connection.xcb(), request.window);
  if (request.kind == "activate") requestActivation(connection, request.window, time);
  if (request.kind == "hide") requestIconify(connection, request.window);
}

}  // namespace

int main(int argc, char** argv) {
  const auto connection = Connection::open();
  if (!connection) return 1;
  std::map<unsigned, std::vector<Request>> plan;
  for (int i = 1; i < argc; ++i) {
    std::istringstream words(argv[i]);
    unsigned keycode = 0;
    Request request;
    words >> keycode >> request.kind >> request.window;
    words >> request.client.x >> request.client.y >> request.client.width >> request.client.height;
    plan[keycode].push_back(request);
  }
  for (const auto& [keycode, requests] : plan) {
    xcb_grab_key(connection->xcb(), 0, connection->root(), XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT, static_cast<xcb_keycode_t>(keycode),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  }
  connection->flush();
  while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection->xcb())}) {
    if (event->response_type != XCB_KEY_PRESS) continue;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
    for (const Request& request : plan[key.detail]) send(*connection, request, key.time);
    connection->flush();
  }
  return 0;
}
