// The simulated desktop under the tests of the contract.
#include "simulated_kind.h"

namespace tilora::contract {

std::vector<DesktopKind> desktopKinds() {
  return {{"Simulated", [] { return std::make_unique<SimulatedUser>(); }}};
}

}  // namespace tilora::contract
