// The events of the connection, those included that arrived while an answer was waited for.
#pragma once

#include <poll.h>
#include <xcb/xcb.h>

#include <chrono>
#include <deque>

#include "platform/x11/connection.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {

class EventQueue {
 public:
  explicit EventQueue(Connection& connection) : connection_(connection) {}

  /// The next event that has arrived, read from the socket if need be; null when there is none. Does not wait.
  Reply<xcb_generic_event_t> poll() {
    if (auto event = takeKept()) return event;
    return Reply<xcb_generic_event_t>{xcb_poll_for_event(connection_.xcb())};
  }
  /// The same without looking at the socket.
  Reply<xcb_generic_event_t> pollQueued() {
    if (auto event = takeKept()) return event;
    return Reply<xcb_generic_event_t>{xcb_poll_for_queued_event(connection_.xcb())};
  }
  /// Waits until there is something to read from the socket, at most so long. False: there is not.
  bool waitForInput(std::chrono::milliseconds longest) {
    pollfd socket{xcb_get_file_descriptor(connection_.xcb()), POLLIN, 0};
    return ::poll(&socket, 1, static_cast<int>(longest.count())) > 0;
  }
  /// Waits for an event for which `matches` answers true and returns it; others are kept for later. Null when the connection is lost.
  template <class Predicate>
  Reply<xcb_generic_event_t> waitFor(Predicate matches) {
    while (Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_.xcb())}) {
      if (matches(*event)) return event;
      kept_.push_back(std::move(event));
    }
    return nullptr;
  }

 private:
  Reply<xcb_generic_event_t> takeKept() {
    if (kept_.empty()) return nullptr;
    auto event = std::move(kept_.front());
    kept_.pop_front();
    return event;
  }

  Connection& connection_;
  std::deque<Reply<xcb_generic_event_t>> kept_;
};

}  // namespace tilora::x11
