// Making windows iconic and bringing them back, with a mark on each that says who made it so.
#pragma once

#include <chrono>
#include <functional>
#include <vector>

#include "platform/x11/client_model.h"
#include "platform/x11/connection.h"
#include "platform/x11/window_manager_traits.h"

namespace tilora::x11 {

/// Carries `ClientWindow::marks` out: while any is set the window is kept iconic and the mark is stored on it as _TILORA_HIDDEN, a CARDINAL
/// mask that outlives the program; bit 0: its application is hidden, bit 1: the window is.
class HideWriter {
 public:
  using Clock = std::chrono::steady_clock;

  explicit HideWriter(Connection& connection) : connection_(connection) {}

  /// Whether the window is to be brought back and can be: it is iconic for a mark that was taken away.
  static bool isToBeRestored(const ClientWindow& window);
  /// Whether the restore goes by an activation, which moves the focus. A manager that ignores the gentle way is asked this way the next
  /// time; and the server ignores the gentle way while the window is still mapped.
  static bool activates(const ClientWindow& window, const WindowManagerTraits& traits);
  /// Asks for the restore and takes the stored mark away. `time` as for an activation.
  void restore(ClientWindow& window, const WindowManagerTraits& traits, xcb_timestamp_t time, Clock::time_point now = Clock::now());
  /// Whether the window has to be made iconic, or its stored mark is out of date.
  static bool isToBeHidden(const ClientWindow& window);
  /// Stores the mark, then asks for the window to become iconic.
  void hide(ClientWindow& window, Clock::time_point now = Clock::now());
  /// Writes the stored mark where nothing else has to be done.
  void storeMarks(ClientWindow& window);

  /// The window was seen for the first time: a mark of an earlier run stands while the window is iconic.
  void adopt(ClientWindow& window);
  /// The window's iconic state may have changed. True: somebody else brought it back, and its marks are gone.
  bool settle(ClientWindow& window);
  /// Whether a request to become iconic has had no effect for too long, for the first time: it is given as long again, in which the manager
  /// is to be asked whether it has dealt with it. Answers so once for each request.
  static bool waitsLonger(ClientWindow& window, Clock::time_point now = Clock::now());
  /// To be called when the manager has dealt with such a request: asks once more if it had no effect. A manager may leave it out for a
  /// window that is chosen in the same moment.
  void repeat(ClientWindow& window, Clock::time_point now = Clock::now());
  /// Gives up on a request that had no effect for too long. True: it did.
  bool expire(ClientWindow& window, Clock::time_point now = Clock::now());
  /// Forgets requests that an earlier window manager did not answer.
  static void forgetRequests(ClientWindow& window);

 private:
  Connection& connection_;
};

}  // namespace tilora::x11
