// X servers that a test has for itself.
#pragma once

#include <string>
#include <vector>

#include "harness/geometry.h"
#include "harness/process.h"

namespace tilora::harness {

/// An Xvfb with one screen, on a display number that was free. It stays when its last client leaves.
class ServerProcess {
 public:
  explicit ServerProcess(int width = 1600, int height = 900);

  /// ":12" for instance.
  const std::string& display() const { return display_; }
  ManagedProcess& process() { return *process_; }

 private:
  std::optional<ManagedProcess> process_;
  std::string display_;
};

}  // namespace tilora::harness
