// Whether the user is moving or resizing a tiled window by hand.
#include "tiling/drag_guard.h"

namespace tilora {

bool isDraggingTiledWindow(Pointer& pointer, const std::optional<FocusedWindow>& focused, const PlacementMemory& memory) {
  const bool primaryButtonHeld = (pointer.pressedButtons() & 1U) != 0;
  if (!primaryButtonHeld || !focused || !isEligible(*focused->window)) return false;
  return memory.placementOf(focused->key) != WindowPlacement::floatCenter;
}

}  // namespace tilora
