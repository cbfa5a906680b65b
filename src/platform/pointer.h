// The pointer's buttons.
#pragma once

#include <cstdint>

namespace tilora {

class Pointer {
 public:
  virtual ~Pointer() = default;

  /// The buttons held at this moment, as a mask: bit 0 is the primary button (NSEvent.pressedMouseButtons).
  virtual std::uint64_t pressedButtons() = 0;
};

}  // namespace tilora
