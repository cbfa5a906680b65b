// The macOS desktop's interfaces in C under the tests of the contract.
#include <gtest/gtest.h>

#include "c_interfaces.h"
#include "simulated_kind.h"

namespace tilora::contract {
namespace {

/// Fails a test that leaves an object, a hot key or an event handler behind.
class MacUser final : public SimulatedUser {
 public:
  MacUser() = default;
  MacUser(const MacUser&) = delete;
  MacUser& operator=(const MacUser&) = delete;
  ~MacUser() override {
    EXPECT_EQ(macos::fake::liveObjects(), 0);
    EXPECT_EQ(macos::fake::registeredHotKeys(), 0U);
    EXPECT_EQ(macos::fake::installedHandlers(), 0U);
  }

  Desktop interfaces() override { return desktop_.interfaces(); }

 private:
  macos::InterfacesInC desktop_{world()};
};

}  // namespace

std::vector<DesktopKind> desktopKinds() {
  return {{"MacInterfacesInC", [] { return std::make_unique<MacUser>(); }}};
}

}  // namespace tilora::contract
