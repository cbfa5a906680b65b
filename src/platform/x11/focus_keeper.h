// Keeping the focus where the user put it while windows are brought back, which on most window managers moves it.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/main_queue.h"
#include "platform/x11/client_model.h"
#include "platform/x11/connection.h"

namespace tilora::x11 {

/// Between `hold` and the moment at which the window manager has dealt with everything, the keyboard's events wait in the server, and what
/// the restored windows do to _NET_ACTIVE_WINDOW is not told to anyone.
class FocusKeeper {
 public:
  /// `helper` is a window of ours whose property changes are selected. `changed` is called when the reported window changed other than in
  /// `update`.
  FocusKeeper(Connection& connection, const ClientModel& model, MainQueue& mainQueue, xcb_window_t helper, std::function<void()> changed);
  FocusKeeper(const FocusKeeper&) = delete;
  FocusKeeper& operator=(const FocusKeeper&) = delete;
  ~FocusKeeper();

  /// The active window as the engine may see it; none while there is none.
  xcb_window_t reported() const { return reported_; }
  bool isHolding() const { return hold_.has_value(); }

  /// Holds the keyboard. To be called before the requests that bring `restored` back.
  void hold(const std::vector<ClientWindowRef>& restored);
  /// Gives the focus back to the window that had it; where there is none, to the last of those restored. Let go of when it has arrived
  /// there.
  void giveBack(xcb_timestamp_t time);

  /// To be called after the model was refreshed. True: the reported window changed.
  bool update();
  void handleEvent(const xcb_generic_event_t& event);

 private:
  struct Hold {
    xcb_window_t anchor = XCB_WINDOW_NONE;
    std::vector<ClientWindowRef> restored;
    /// Whether the manager has answered a request that was sent after all others.
    bool managerAnswered = false;
    bool asked = false;
  };

  bool isOurs(xcb_window_t active) const;
  bool isDone() const;
  void letGo();
  void startGuard();
  void guardElapsed();

  Connection& connection_;
  const ClientModel& model_;
  MainQueue& mainQueue_;
  xcb_window_t helper_;
  std::function<void()> changed_;
  xcb_window_t reported_ = XCB_WINDOW_NONE;
  std::optional<Hold> hold_;
  std::uint64_t generation_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tilora::x11
