// Key presses that reach the program's own windows.
#pragma once

#include <memory>
#include <vector>

#include "platform/key_monitor.h"

namespace tilora::macos {

/// Key codes and flags are those of the system's events. Qt, which swaps Control and Command, has no part in them.
class MacKeyMonitor final : public KeyMonitor {
 public:
  std::optional<Subscription> install(std::function<bool(const KeyEvent&)> handler) override;
  /// A registered combination was pressed, which the system keeps from the windows: shows it to the installed monitor while this program
  /// has the keyboard. `modifiers` is a mask of Carbon's Events.h. Whether it was swallowed.
  bool offer(std::uint32_t keyCode, std::uint32_t modifiers);

 private:
  using Handler = std::function<bool(const KeyEvent&)>;

  std::vector<std::weak_ptr<Handler>> installed_;
};

}  // namespace tilora::macos
