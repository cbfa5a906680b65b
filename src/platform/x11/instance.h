// One running copy of the program on a display: a selection says who it is.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/x11/connection.h"

namespace tilora::x11 {

/// The ownership of the display's instance selection, a manager selection as ICCCM section 2.8 describes it. The server gives it up when
/// the owner's connection ends, however that comes about.
class Instance {
 public:
  /// What became of a start.
  enum class Outcome : std::uint8_t {
    /// This is the only copy.
    acquired,
    /// Another copy runs. It has been asked to show itself.
    alreadyRunning,
    /// The server does not answer.
    failed,
  };

  struct Start {
    Outcome outcome = Outcome::failed;
    /// There when `acquired`.
    std::unique_ptr<Instance> instance;
  };

  /// Takes the selection unless another client has it. Of two copies that start together one wins.
  static Start acquire(Connection& connection);

  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;
  /// Gives the selection back.
  ~Instance();

  /// Looks at an event of the connection and calls the callbacks. True: it was about this selection.
  bool handleEvent(const xcb_generic_event_t& event);

  /// Called when a second copy was started.
  void onAskedToShow(std::function<void()> callback) { askedToShow_ = std::move(callback); }
  /// Called when another client took the selection away: this copy should quit.
  void onLost(std::function<void()> callback) { lost_ = std::move(callback); }

  /// The unmapped window that owns the selection.
  xcb_window_t window() const { return window_; }

 private:
  Instance(Connection& connection, xcb_atom_t selection, xcb_window_t window)
      : connection_(connection), selection_(selection), window_(window) {}

  Connection& connection_;
  xcb_atom_t selection_;
  xcb_window_t window_;
  std::function<void()> askedToShow_;
  std::function<void()> lost_;
};

}  // namespace tilora::x11
