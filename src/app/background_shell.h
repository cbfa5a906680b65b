// The program's place on the desktop while it has no windows of its own.
#pragma once

#include "platform/shell.h"

namespace tilora::app {

/// A program in the background: nothing to raise, and addresses go to the desktop's own opener.
class BackgroundShell : public Shell {
 public:
  void activateSelf() override {}
  std::vector<std::shared_ptr<OwnWindow>> ownWindows() override { return {}; }
  void openURL(std::string_view url) override;
};

}  // namespace tilora::app
