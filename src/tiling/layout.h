// Putting one window into its placement.
#pragma once

#include "platform/desktop.h"
#include "tiling/placement.h"
#include "windows/managed_window.h"

namespace tilora {

/// Writes the frame of the placement to a window that can be resized, and moves one of fixed size to the middle of it. It writes also when
/// the window is already there. A floating placement touches nothing: the window keeps wherever it was put.
void applyPlacement(WindowPlacement placement, const ManagedWindow& window, double padding, const Desktop& desktop);

/// The same for a floating placement, without that exception.
void applyFloatCenter(const ManagedWindow& window, double padding, const Desktop& desktop);

}  // namespace tilora
