// One pass over the desktop: who is shown, where, and who is hidden.
#pragma once

#include "platform/desktop.h"
#include "tiling/placement_memory.h"

namespace tilora {

/// Brings the memory up to date with the living windows, lays out the one or two windows that each screen shows, and hides all others.
///
/// Nothing at all happens while the user drags a tiled window, or while a window that is not eligible (a dialog, a sheet) has the focus.
/// `padding` is the gap in points. The process must be trusted.
void retile(const Desktop& desktop, PlacementMemory& memory, double padding);

}  // namespace tilora
