// The recorder's view of the keyboard: what the program's own windows and its held combinations hand to it.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/key_monitor.h"

namespace tilora::x11 {

/// Takes key-downs from whoever receives them: the hot keys hand in a combination that is held for this process, the program hands in the
/// keys of its own windows.
class X11KeyMonitor : public KeyMonitor {
 public:
  X11KeyMonitor() : X11KeyMonitor([] { return true; }) {}
  /// `hasKeyboard` tells whether a window of this program is the active one.
  explicit X11KeyMonitor(std::function<bool()> hasKeyboard) : hasKeyboard_(std::move(hasKeyboard)) {}

  std::optional<Subscription> install(std::function<bool(const KeyEvent&)> handler) override;

  bool isInstalled() const { return !handlers_.empty(); }
  /// Whether a combination that is held for this program goes to a monitor.
  bool takesCombinations() const { return isInstalled() && hasKeyboard_(); }
  /// Shows a key-down to the monitors, the one installed last first, until one swallows it. True: it was swallowed.
  bool deliver(const KeyEvent& event);

 private:
  using Handler = std::shared_ptr<std::function<bool(const KeyEvent&)>>;

  std::function<bool()> hasKeyboard_;
  std::vector<Handler> handlers_;
};

}  // namespace tilora::x11
