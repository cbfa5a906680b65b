// The screens of the desktop.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/geometry.h"

namespace tilora {

/// One screen. Coordinates in points, origin at the bottom-left of the desktop, y upwards.
struct Screen {
  Rect frame;
  /// The part of `frame` that menu bars, docks and panels leave free.
  Rect visibleFrame;
  /// The screen number of its device description; its low 32 bits name the display. Absent: it has none.
  std::optional<std::uint64_t> number;
};

/// A shared reference to a screen. Two references are to the same screen object when the pointers are equal.
using ScreenRef = std::shared_ptr<const Screen>;

class Screens {
 public:
  virtual ~Screens() = default;

  /// All screens in the desktop's order. The reference is valid until the next call or the next turn of the main queue.
  virtual const std::vector<ScreenRef>& screens() = 0;
  /// The screen with the keyboard focus; null when there is none.
  virtual ScreenRef mainScreen() = 0;
};

}  // namespace tilora
