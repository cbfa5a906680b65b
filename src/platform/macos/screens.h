// The screens of the system.
#pragma once

#include "platform/screens.h"

namespace tilora::macos {

/// Asks the system every time: what it tells right after a change of the displays is not yet final, and no notification says when it is. A
/// screen whose values stay the same stays the same object.
class MacScreens final : public Screens {
 public:
  const std::vector<ScreenRef>& screens() override;
  ScreenRef mainScreen() override;

 private:
  ScreenRef known(const Screen& screen) const;

  std::vector<ScreenRef> list_;
};

}  // namespace tilora::macos
