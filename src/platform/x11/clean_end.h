// Giving everything back that Tilora hid, when it ends.
#pragma once

#include "platform/x11/desktop_state.h"

namespace tilora::x11 {

/// Restores every window that carries a mark, on its own virtual desktop, and takes the marks away; returns when the server has all of it.
/// The current desktop, the stacking of what was shown and the focus stay. Without a window manager, also one that goes meanwhile, the
/// windows are mapped and left as ones in use, and so the next manager finds them. Takes a few seconds at most when a manager does not
/// answer.
void showHiddenWindows(DesktopState& state);

}  // namespace tilora::x11
