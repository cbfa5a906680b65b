// What one turn of the event loop changes about other programs' windows, sent together.
#pragma once

#include <functional>
#include <vector>

#include "platform/x11/client_model.h"
#include "platform/x11/focus_keeper.h"
#include "platform/x11/frame_writer.h"
#include "platform/x11/hide_writer.h"
#include "platform/x11/server_clock.h"
#include "platform/x11/window_manager_traits.h"

namespace tilora::x11 {

/// Collects the windows that were written to. Frames go first, then restores, then hides, then the focus; of several values the last one
/// wins, so that nothing is seen twice.
class WindowChanges {
 public:
  WindowChanges(Connection& connection, const ClientModel& model, FrameWriter& frames, HideWriter& hides, FocusKeeper& focus,
                ServerClock& clock)
      : connection_(connection), model_(model), frames_(frames), hides_(hides), focus_(focus), clock_(clock) {}

  /// The frame or the marks of this window were written.
  void written(const ClientWindowRef& window);
  /// Sends what there is to send. What has to wait for another virtual desktop stays. Answers whether anything was asked for.
  bool commit();

 private:
  /// Whether the window is a dialog of one that stays iconic: window managers bring it back together with that one.
  bool followsItsParent(const ClientWindow& window) const;
  /// Whether the window is a dialog of one that somebody else brings back at this moment, and the dialog with it: asked for once more it
  /// would take the focus from that one.
  bool waitsForItsParent(const ClientWindow& window) const;
  std::vector<ClientWindowRef> takeRestorable(const WindowManagerTraits& traits);

  Connection& connection_;
  const ClientModel& model_;
  FrameWriter& frames_;
  HideWriter& hides_;
  FocusKeeper& focus_;
  ServerClock& clock_;
  std::vector<ClientWindowRef> written_;
};

}  // namespace tilora::x11
