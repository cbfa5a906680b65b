// The recorder's view of the keyboard: what the program's own windows and its held combinations hand to it.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/key_monitor.h"

namespace tilora::x11 {

/// Takes key-downs from whoever receives them: the hot keys hand in a combination that is held for this process, the program hands in the
/// keys of its own windows.
class X11KeyMonitor : public KeyMonitor {
 public:
  std::optional<Subscription> install(std::function<bool(const KeyEvent&)> handler) override;

  bool isInstalled() const { return !handlers_.empty(); }
  /// Shows a key-down to the monitors, the one installed last first, until one swallows it. True: it was swallowed.
  bool deliver(const KeyEvent& event);

 private:
  using Handler = std::shared_ptr<std::function<bool(const KeyEvent&)>>;

  std::vector<Handler> handlers_;
};

}  // namespace tilora::x11
