// The server's time, as window managers want it with an activation.
#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/x11/connection.h"
#include "platform/x11/event_queue.h"

namespace tilora::x11 {

class ServerClock {
 public:
  /// `helper` is a window of ours whose property changes are selected.
  ServerClock(Connection& connection, EventQueue& events, xcb_window_t helper)
      : connection_(connection), events_(events), helper_(helper) {}

  /// The time of what is being handled if that was a key press; else the server is asked, which is one round trip.
  xcb_timestamp_t now();
  /// Holds for the rest of the turn.
  void setTimeOfTurn(std::optional<xcb_timestamp_t> time) { timeOfTurn_ = time; }

 private:
  Connection& connection_;
  EventQueue& events_;
  xcb_window_t helper_;
  std::optional<xcb_timestamp_t> timeOfTurn_;
};

}  // namespace tilora::x11
