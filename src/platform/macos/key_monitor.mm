// Key presses that reach the program's own windows, through a local event monitor.
#include "platform/macos/key_monitor.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <utility>

#include "platform/macos/modifier_flags.h"

namespace tilora::macos {

std::optional<Subscription> MacKeyMonitor::install(std::function<bool(const KeyEvent&)> handler) {
  const auto installed = std::make_shared<Handler>(std::move(handler));
  const std::weak_ptr<Handler> ifInstalled = installed;
  id token = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     const auto monitor = ifInstalled.lock();
                                                     const bool isSwallowed = monitor && (*monitor)({event.keyCode, event.modifierFlags});
                                                     return isSwallowed ? nil : event;
                                                   }];
  if (!token) return std::nullopt;
  installed_.push_back(ifInstalled);
  return Subscription([token, installed] { [NSEvent removeMonitor:token]; });
}

bool MacKeyMonitor::offer(std::uint32_t keyCode, std::uint32_t modifiers) {
  std::erase_if(installed_, [](const auto& monitor) { return monitor.expired(); });
  if (installed_.empty() || !NSApplication.sharedApplication.active) return false;
  const auto monitors = installed_;  // a monitor may end itself or install another
  const KeyEvent event{keyCode, eventFlags(modifiers)};
  return std::any_of(monitors.begin(), monitors.end(), [&](const auto& entry) {
    const auto monitor = entry.lock();
    return monitor && (*monitor)(event);
  });
}

}  // namespace tilora::macos
