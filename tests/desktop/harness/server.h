// X servers that a test has for itself.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "harness/geometry.h"
#include "harness/process.h"

namespace tilora::harness {

/// A server with one screen, on a display number that was free. It stays when its last client leaves.
class ServerProcess {
 public:
  /// Xvfb: a screen in memory with one output.
  explicit ServerProcess(int width = 1600, int height = 900);
  /// Xorg with the dummy driver: outputs in memory, each with its area. The first one is primary and plugged in.
  explicit ServerProcess(const std::vector<PixelRect>& outputs);

  /// ":12" for instance.
  const std::string& display() const { return display_; }
  ManagedProcess& process() { return *process_; }

  void plugIn(std::size_t output);
  void unplug(std::size_t output);

 private:
  void start(const std::vector<std::string>& arguments);

  TemporaryDirectory files_;
  std::vector<PixelRect> outputs_;
  std::optional<ManagedProcess> process_;
  std::string display_;
};

}  // namespace tilora::harness
