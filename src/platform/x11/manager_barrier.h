// Asking the window manager whether it has dealt with everything up to now.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

#include "platform/x11/connection.h"
#include "platform/x11/event_type.h"
#include "platform/x11/requests.h"

namespace tilora::x11 {

/// Questions that a window manager answers in their order, after what it was told before: it is asked for the decorations that a window of
/// ours would get (_NET_REQUEST_FRAME_EXTENTS).
class ManagerBarrier {
 public:
  /// `helper` is a window of ours that a window manager would decorate, and whose property changes are selected.
  ManagerBarrier(Connection& connection, xcb_window_t helper) : connection_(connection), helper_(helper) {}

  /// Asks; the answer is there once `isAnswered` says so of the returned number.
  std::uint64_t ask() {
    requestFrameExtents(connection_, helper_);
    return ++asked_;
  }
  bool isAnswered(std::uint64_t question) const { return answered_ >= question; }
  /// Nobody will answer what was asked of a manager that is gone.
  void forgetQuestions() { answered_ = asked_; }

  void handleEvent(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == helper_ && change.atom == connection_.atoms()._NET_FRAME_EXTENTS && answered_ < asked_) ++answered_;
  }

 private:
  Connection& connection_;
  xcb_window_t helper_;
  std::uint64_t asked_ = 0;
  std::uint64_t answered_ = 0;
};

}  // namespace tilora::x11
