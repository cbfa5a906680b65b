// What the window server of the system knows of a window.
#pragma once

#include "platform/window_server.h"

namespace tilora::macos {

/// Asks for one window at a time (CGWindowListCopyWindowInfo). A member of an entry that is not what it must be is absent.
class WindowList final : public WindowServer {
 public:
  std::vector<WindowServerEntry> entries(std::uint32_t windowNumber) override;
};

}  // namespace tilora::macos
