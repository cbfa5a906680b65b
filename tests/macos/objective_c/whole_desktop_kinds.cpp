// The whole macOS desktop under the tests of the contract.
#include "objective_c/whole_desktop.h"
#include "simulated_kind.h"

namespace tilora::contract {
namespace {

class MacUser final : public SimulatedUser {
 public:
  Desktop interfaces() override { return desktop_.interfaces(); }

 private:
  macos::WholeDesktop desktop_{world()};
};

}  // namespace

std::vector<DesktopKind> desktopKinds() {
  return {{"Mac", [] { return std::make_unique<MacUser>(); }}};
}

}  // namespace tilora::contract
