// Bringing windows to the frames that the engine wrote, and leaving in peace those that will not go there.
#pragma once

#include <chrono>

#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"
#include "platform/x11/monitors.h"

namespace tilora::x11 {

/// A frame with fractional edges as whole pixels: each edge is rounded, so that two frames that share an edge still share it.
PixelRect roundedEdges(Point position, Size size);

/// The nearest visible frame to `wanted` that the window's own limits allow (ICCCM 4.1.2.3), moved so far into `area` as it fits. Root
/// coordinates.
PixelRect withinLimits(const ClientWindow& window, const PixelRect& wanted, const PixelRect& area);

/// Decides which written frames become requests. A frame that the window already has, that it was just asked for, or that it has answered
/// with another one of its own choice is not requested again.
class FrameWriter {
 public:
  using Clock = std::chrono::steady_clock;

  FrameWriter(Connection& connection, const ScreenLayout& layout) : connection_(connection), layout_(layout) {}

  /// Turns what was written to `window.frame` in this turn into at most one request. Answers whether there was need for it.
  bool write(ClientWindow& window, Clock::time_point now = Clock::now());
  /// The window's frame, decorations or state changed. A request that reckoned with other decorations is made anew.
  void changed(ClientWindow& window, Clock::time_point now = Clock::now());

 private:
  PixelRect area(const PixelRect& wanted) const;
  bool coversAMonitor(const PixelRect& visible) const;
  bool shouldRequest(PendingFrame& frame, const PixelRect& visible, Clock::time_point now) const;
  void request(ClientWindow& window, const PixelRect& visible, Clock::time_point now);

  Connection& connection_;
  const ScreenLayout& layout_;
};

}  // namespace tilora::x11
