// Whether the user lets this process control other programs' windows.
#pragma once

#include "platform/trust.h"

namespace tilora::macos {

class AxTrust final : public Trust {
 public:
  bool isProcessTrusted() override;
  bool isProcessTrusted(bool prompt) override;
};

}  // namespace tilora::macos
