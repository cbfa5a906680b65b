// The monitors of the X screen and what panels leave of them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/screens.h"
#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"
#include "platform/x11/values.h"

namespace tilora::x11 {

/// One RandR monitor. Root coordinates.
struct Monitor {
  PixelRect frame;
  bool primary = false;
  /// Its first output; absent for a monitor that someone defined without one.
  std::optional<std::uint32_t> output;

  bool operator==(const Monitor&) const = default;
};

/// The part of `monitor` that struts leave free. A strut is measured from the edge of the root window and belongs to the monitor that it
/// ends on; it takes nothing from monitors that it merely crosses.
PixelRect withoutStruts(const Monitor& monitor, const std::vector<Strut>& struts, const PixelRect& root);

/// All monitors, the primary first. RandR 1.5; where the server lacks it, or knows none, the root window is the one monitor.
std::vector<Monitor> readMonitors(Connection& connection);

/// The width and height of the root window now, origin 0.
PixelRect readRootFrame(Connection& connection);

/// The screens in the engine's coordinates (origin bottom-left, y upwards, flipped about the lowest edge of all monitors). Main thread
/// only.
class ScreenLayout {
 public:
  /// Takes over a new arrangement. Answers whether any screen changed. Screens that did not change keep their objects.
  bool update(const std::vector<Monitor>& monitors, const std::vector<Strut>& struts, const PixelRect& root,
              const std::optional<PixelRect>& workArea);

  const std::vector<ScreenRef>& screens() const { return screens_; }
  const std::vector<Monitor>& monitors() const { return monitors_; }
  /// The visible part of each monitor, in the order of `monitors`; root coordinates.
  const std::vector<PixelRect>& visibleFrames() const { return visible_; }
  /// The index of the monitor that holds the point; absent when none does.
  std::optional<std::size_t> monitorAt(int x, int y) const;
  /// The smallest y of all monitors: what lies between root coordinates and accessibility ones, whose origin is the top of all screens.
  int top() const { return top_; }

 private:
  std::vector<Monitor> monitors_;
  std::vector<PixelRect> visible_;
  std::vector<ScreenRef> screens_;
  int top_ = 0;
};

}  // namespace tilora::x11
