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
#include "platform/x11/manager_barrier.h"
#include "platform/x11/server_clock.h"
#include "platform/x11/window_manager_traits.h"

namespace tilora::x11 {

/// From `hold` until the window manager has given the focus back, the keyboard's events wait in the server, so that nothing typed meanwhile
/// reaches another window. What the restored windows do to _NET_ACTIVE_WINDOW, which some managers write later, is not told to anyone until
/// it has settled.
class FocusKeeper {
 public:
  /// `helper` is a window of ours that a window manager would decorate, and whose property changes are selected. `changed` is called when
  /// the reported window changed other than in `update`.
  FocusKeeper(Connection& connection, const ClientModel& model, MainQueue& mainQueue, ServerClock& clock, ManagerBarrier& barrier,
              std::function<void()> changed);
  FocusKeeper(const FocusKeeper&) = delete;
  FocusKeeper& operator=(const FocusKeeper&) = delete;
  ~FocusKeeper();

  /// The active window as the engine may see it; none while there is none.
  xcb_window_t reported() const { return reported_; }

  /// Whether the keyboard is held now.
  bool holdsKeyboard() const { return hold_ && hold_->keyboardIsHeld; }
  /// To be called before the requests that bring `restored` back, of which there is at least one. Holds the keyboard where they move the
  /// focus.
  void hold(const std::vector<ClientWindowRef>& restored, const WindowManagerTraits& traits);
  /// To be called after those requests. Once the focus has arrived where they move it, it is given back to the window that had it; where
  /// there is none, it stays: some managers ignore a request for the focus while they have not noticed that it was moved.
  void giveBack(const WindowManagerTraits& traits);

  /// To be called after the model was refreshed. True: the reported window changed.
  bool update();

 private:
  /// One stretch of time in which windows are brought back.
  struct Hold {
    xcb_window_t anchor = XCB_WINDOW_NONE;
    std::vector<ClientWindowRef> restored;
    bool keyboardIsHeld = false;
    /// Whether the focus will move to `target`, sooner or later.
    bool expectsFocus = false;
    /// The last of those restored; where each restore moves the focus, the last one beside the anchor if there is one. The anchor is
    /// restored as well when the user went back to it while it was being hidden: it has the focus from the beginning, which says nothing
    /// about the others.
    xcb_window_t target = XCB_WINDOW_NONE;
    /// Whether the restores are all sent.
    bool sent = false;
    /// Whether the focus was asked back.
    bool askedBack = false;
    /// Whether the manager tells when it is done, and the question that it answers then.
    bool managerAnswers = false;
    std::uint64_t question = 0;
    /// The question that was asked after the restores.
    std::uint64_t questionAfterRestores = 0;
  };

  /// A window that the user chose while the focus was already asked back for another one: the manager may do that afterwards.
  struct Choice {
    xcb_window_t window = XCB_WINDOW_NONE;
    Hold overridden;
    bool repeated = false;
  };

  static bool isOurs(xcb_window_t active, const Hold& hold);
  /// Whether the window manager undid the user's choice for our request's sake; the choice is repeated then.
  bool undoesChoice(xcb_window_t active);
  bool hasArrived(xcb_window_t active) const;
  bool restoresAreDone() const;
  bool isStillToCome() const;
  static xcb_window_t targetOf(const Hold& hold, const WindowManagerTraits& traits);
  void holdKeyboard();
  void askBack();
  void releaseKeyboard();
  void end();
  void startGuard(std::chrono::milliseconds delay);
  void guardElapsed(bool isLast);

  Connection& connection_;
  const ClientModel& model_;
  MainQueue& mainQueue_;
  ServerClock& clock_;
  ManagerBarrier& barrier_;
  std::function<void()> changed_;
  xcb_window_t reported_ = XCB_WINDOW_NONE;
  std::optional<Hold> hold_;
  std::optional<Choice> choice_;
  std::uint64_t generation_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tilora::x11
