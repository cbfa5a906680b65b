// The connection to the X server.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>

#include "platform/x11/atoms.h"

namespace tilora::x11 {

/// First event codes and major opcodes of the extensions in use; 0: the server does not have it.
struct Extensions {
  std::uint8_t randrFirstEvent = 0;
  std::uint8_t randrOpcode = 0;
  std::uint8_t xkbFirstEvent = 0;
  std::uint8_t xkbOpcode = 0;
  std::uint8_t resOpcode = 0;
};

/// One open connection with its default screen. Main thread only; closed by the destructor.
class Connection {
 public:
  /// Connects to `displayName` (empty: the one that the session names). Null when there is no such server, or it refuses or
  /// has no memory for the atoms.
  static std::unique_ptr<Connection> open(const std::string& displayName = {});

  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  xcb_connection_t* xcb() const { return xcb_; }
  const xcb_screen_t& screen() const { return *screen_; }
  xcb_window_t root() const { return screen_->root; }
  /// The number of the default screen, as manager selections are named by it.
  int screenNumber() const { return screenNumber_; }
  const Atoms& atoms() const { return atoms_; }
  const Extensions& extensions() const { return extensions_; }
  /// Whether the connection is broken: the server is gone or closed it.
  bool failed() const { return xcb_connection_has_error(xcb_) != 0; }
  /// Sends everything that is waiting. Answers nothing: a broken connection shows in `failed`.
  void flush() const { xcb_flush(xcb_); }

 private:
  Connection(xcb_connection_t* xcb, xcb_screen_t* screen, int screenNumber);

  xcb_connection_t* xcb_;
  xcb_screen_t* screen_;
  int screenNumber_;
  Atoms atoms_;
  Extensions extensions_;
  bool isWhole_ = false;
};

}  // namespace tilora::x11
