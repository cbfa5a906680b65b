// The window server of the simulated desktop: finds windows by the number they have at that time.
#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "platform/simulated/simulated_window.h"
#include "platform/window_server.h"

namespace tilora::simulated {

/// Knows the windows that were declared with something to tell; of two with one number it answers with the one declared first.
class SimulatedWindowServer final : public WindowServer {
 public:
  std::vector<WindowServerEntry> entries(std::uint32_t windowNumber) override;

  /// A window appears, changes its "AXWindowNumber", or goes away. It must not move in memory meanwhile.
  void add(const SimulatedWindow& window);
  void renumber(const SimulatedWindow& window);
  void remove(const SimulatedWindow& window);

 private:
  struct Known {
    std::uint64_t declared = 0;
    std::optional<std::int64_t> number = {};
  };

  void enter(const SimulatedWindow& window, const Known& known);
  void leave(const Known& known);

  std::unordered_map<const SimulatedWindow*, Known> known_;
  /// By number, then in the order of declaration.
  std::unordered_map<std::int64_t, std::map<std::uint64_t, const SimulatedWindow*>> byNumber_;
  std::uint64_t declarations_ = 0;
};

}  // namespace tilora::simulated
