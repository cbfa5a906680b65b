// The program's own place on the desktop.
#pragma once

#include "platform/shell.h"

namespace tilora::macos {

/// The windows are those of the application object, whoever made them.
class MacShell final : public Shell {
 public:
  void activateSelf() override;
  std::vector<std::shared_ptr<OwnWindow>> ownWindows() override;
  void openURL(std::string_view url) override;
};

}  // namespace tilora::macos
