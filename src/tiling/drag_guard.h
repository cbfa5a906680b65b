// Whether the user is moving or resizing a tiled window by hand.
#pragma once

#include <optional>

#include "platform/pointer.h"
#include "tiling/placement_memory.h"
#include "windows/discovery.h"

namespace tilora {

/// True while the primary button is held and the focused window is an eligible one that does not float.
bool isDraggingTiledWindow(Pointer& pointer, const std::optional<FocusedWindow>& focused, const PlacementMemory& memory);

}  // namespace tilora
