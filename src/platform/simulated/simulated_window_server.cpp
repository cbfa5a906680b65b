// Windows by number, kept up as windows come, are renumbered and go.
#include "platform/simulated/simulated_window_server.h"

namespace tilora::simulated {

std::vector<WindowServerEntry> SimulatedWindowServer::entries(std::uint32_t windowNumber) {
  const auto found = byNumber_.find(windowNumber);
  if (found == byNumber_.end()) return {};
  return {*found->second.begin()->second->server()};
}

void SimulatedWindowServer::add(const SimulatedWindow& window) {
  if (!window.server()) return;
  const auto [entry, isNew] = known_.try_emplace(&window, Known{++declarations_, window.windowNumber()});
  if (isNew) enter(window, entry->second);
}

void SimulatedWindowServer::renumber(const SimulatedWindow& window) {
  const auto entry = known_.find(&window);
  if (entry == known_.end()) return;
  leave(entry->second);
  entry->second.number = window.windowNumber();
  enter(window, entry->second);
}

void SimulatedWindowServer::remove(const SimulatedWindow& window) {
  const auto entry = known_.find(&window);
  if (entry == known_.end()) return;
  leave(entry->second);
  known_.erase(entry);
}

void SimulatedWindowServer::enter(const SimulatedWindow& window, const Known& known) {
  if (known.number) byNumber_[*known.number].emplace(known.declared, &window);
}

void SimulatedWindowServer::leave(const Known& known) {
  if (!known.number) return;
  const auto found = byNumber_.find(*known.number);
  found->second.erase(known.declared);
  if (found->second.empty()) byNumber_.erase(found);
}

}  // namespace tilora::simulated
