// What the window server itself knows of a window.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/accessibility.h"

namespace tilora {

/// One entry of the window server's list. Bounds in points, top-left origin.
struct WindowServerEntry {
  std::optional<ProcessId> ownerPid;
  std::optional<Rect> bounds;
};

class WindowServer {
 public:
  virtual ~WindowServer() = default;

  /// The entries for one window number; empty when the server knows none (CGWindowListCopyWindowInfo, including-window option).
  virtual std::vector<WindowServerEntry> entries(std::uint32_t windowNumber) = 0;
};

}  // namespace tilora
