// A user on a simulated desktop.
#include "simulated_kind.h"

namespace tilora::contract {

using namespace std::chrono_literals;

SimulatedUser::SimulatedUser() { world_.screens().set(1, Screen{{0, 0, 1440, 900}, {0, 0, 1440, 875}, 1}); }

bool SimulatedUser::eventually(const std::function<bool()>& holds) {
  constexpr auto patience = 2000ms;
  const auto end = world_.clock().now() + patience;
  world_.clock().runPosted();
  while (!holds()) {
    if (world_.clock().now() >= end) return false;
    world_.clock().advance(1ms);
  }
  return true;
}

ProcessId SimulatedUser::open(const std::string& title) {
  const ProcessId pid = ++lastPid_;
  simulated::WindowTraits traits;
  traits.attributes[AttributeName::role] = std::string("AXWindow");
  traits.attributes[AttributeName::subrole] = std::string("AXStandardWindow");
  traits.attributes[AttributeName::title] = title;
  traits.attributes[AttributeName::position] = Point{50, 60};
  traits.attributes[AttributeName::size] = Size{400, 300};
  traits.attributes[AttributeName::windowNumber] = Number(std::int64_t{pid});
  traits.settable[AttributeName::position] = simulated::Settability::yes;
  traits.settable[AttributeName::size] = simulated::Settability::yes;
  traits.hash = windowOf(pid);
  world_.addApplication(pid, {.bundle = "com.example." + title, .name = title});
  world_.addWindow(windowOf(pid), pid, std::move(traits));
  world_.notify(WorkspaceEvent::launched);
  activate(pid);
  return pid;
}

void SimulatedUser::activate(ProcessId pid) {
  world_.setFrontmost(pid);
  world_.setFocusedWindow(pid, windowOf(pid));
  world_.notify(WorkspaceEvent::activated);
}

void SimulatedUser::quit(ProcessId pid) {
  world_.quit(pid);
  world_.notify(WorkspaceEvent::terminated);
}

void SimulatedUser::pressShortcut() {
  constexpr std::uint32_t leftBracket = 33;
  constexpr std::uint32_t optionShift = 0xA00;
  world_.hotKeys().press({leftBracket, optionShift});
}

}  // namespace tilora::contract
