// The pointer's buttons.
#pragma once

#include "platform/pointer.h"

namespace tilora::macos {

class MacPointer final : public Pointer {
 public:
  std::uint64_t pressedButtons() override;
};

}  // namespace tilora::macos
