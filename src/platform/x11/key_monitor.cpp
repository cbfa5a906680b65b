// Handing key-downs to the installed monitors.
#include "platform/x11/key_monitor.h"

#include <algorithm>
#include <utility>

namespace tilora::x11 {

std::optional<Subscription> X11KeyMonitor::install(std::function<bool(const KeyEvent&)> handler) {
  if (!handler) return std::nullopt;
  auto shared = std::make_shared<std::function<bool(const KeyEvent&)>>(std::move(handler));
  handlers_.push_back(shared);
  return Subscription([this, shared = std::move(shared)] { std::erase(handlers_, shared); });
}

bool X11KeyMonitor::deliver(const KeyEvent& event) {
  // A handler may take itself or others away while it runs.
  const auto installed = handlers_;
  return std::any_of(installed.rbegin(), installed.rend(),
                     [&](const Handler& handler) { return std::ranges::find(handlers_, handler) != handlers_.end() && (*handler)(event); });
}

}  // namespace tilora::x11
