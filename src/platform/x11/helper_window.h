// A window of our own that is never shown: other clients and the server answer on it.
#pragma once

#include <xcb/xcb.h>

#include "platform/x11/connection.h"

namespace tilora::x11 {

/// Unmapped, an ordinary top-level window otherwise, with its property changes selected. Destroyed with this object.
class HelperWindow {
 public:
  /// The connection must outlive it.
  explicit HelperWindow(Connection& connection) : connection_(connection), id_(xcb_generate_id(connection.xcb())) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.xcb(), XCB_COPY_FROM_PARENT, id_, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  }
  HelperWindow(const HelperWindow&) = delete;
  HelperWindow& operator=(const HelperWindow&) = delete;
  ~HelperWindow() { xcb_destroy_window(connection_.xcb(), id_); }

  xcb_window_t id() const { return id_; }

 private:
  Connection& connection_;
  xcb_window_t id_;
};

}  // namespace tilora::x11
