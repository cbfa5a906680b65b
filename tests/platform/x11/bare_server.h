// An X server without a window manager, and the connection of the code under test to it.
#pragma once

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/process.h"
#include "harness/server.h"
#include "harness/session.h"
#include "platform/x11/connection.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {

/// Hands the events of a connection to whom they are for.
class EventPump {
 public:
  EventPump(Connection& connection, std::function<void(const xcb_generic_event_t&)> handler)
      : connection_(connection), handler_(std::move(handler)) {}

  /// Handles every event that the server has sent up to now.
  void takeAll() {
    const auto cookie = xcb_get_input_focus(connection_.xcb());
    const Reply<xcb_get_input_focus_reply_t> barrier{xcb_get_input_focus_reply(connection_.xcb(), cookie, nullptr)};
    while (takeOne()) {
    }
  }

  /// Handles events until `holds`, asked after each; false when the deadline passes first.
  bool until(const std::function<bool()>& holds) {
    const auto end = std::chrono::steady_clock::now() + harness::defaultDeadline;
    while (!holds()) {
      connection_.flush();
      if (takeOne()) continue;
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
      if (left.count() <= 0 || !harness::waitReadable(xcb_get_file_descriptor(connection_.xcb()), left)) return false;
    }
    return true;
  }

 private:
  bool takeOne() {
    const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.xcb())};
    if (event) handler_(*event);
    return event != nullptr;
  }

  Connection& connection_;
  std::function<void(const xcb_generic_event_t&)> handler_;
};

/// The server, the session of the programs on it, the view of the test and the connection under test.
struct BareServer {
  harness::ServerProcess server;
  harness::Session session{server.display()};
  harness::Display display{server.display()};
  harness::Keyboard keyboard{display};
  harness::PointerDevice mouse{display};
  std::unique_ptr<Connection> connection = Connection::open(server.display());

  /// Runs a program of the session to its end; whether it succeeded.
  bool run(std::vector<std::string> arguments) {
    auto process = session.start(std::move(arguments));
    const auto end = process.waitForEnd();
    return end && end->status == 0;
  }

  /// Replaces the keyboard's map by the one of this layout.
  bool setLayout(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "setxkbmap");
    return run(std::move(arguments));
  }
};

}  // namespace tilora::x11
