// Asking the user whether Tilora may control the windows of this desktop.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/helper_program.h"

namespace tilora::app {

/// Shows the consent dialog in a process of its own: this one needs no toolkit then, and goes on while the user thinks. Main thread only.
class ConsentRequest {
 public:
  ConsentRequest();
  /// Asks with `program` instead of the dialog. The dialog goes off the screen with this object.
  explicit ConsentRequest(QString program);

  /// Asks, and later calls `answer` with true when the user chose to start; any other end of the dialog is a false. With `missing`, the
  /// dialog says instead what this session lacks, one sentence each, and the answer is false. Does nothing while the dialog is open.
  void ask(const std::vector<std::string>& missing, const std::function<void(bool)>& answer);

 private:
  HelperProgram dialog_;
};

}  // namespace tilora::app
