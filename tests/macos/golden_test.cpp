// The engine does the same through the macOS desktop as straight on the simulated one.
#include <gtest/gtest.h>

#include <string>

#include "fakes/fake_system.h"
#include "golden_scripts.h"
#include "platform/macos/elements.h"
#include "platform/macos/hot_keys.h"
#include "platform/macos/trust.h"
#include "platform/macos/window_list.h"
#include "trace_comparison.h"

namespace tilora::macos {
namespace {

/// The interfaces in C of the macOS desktop over the fake system; the other parts are the simulated desktop's own.
class InterfacesInC final : public replay::DesktopView {
 public:
  explicit InterfacesInC(simulated::SimulatedDesktop& world) : system_(world) {}
  InterfacesInC(const InterfacesInC&) = delete;
  InterfacesInC& operator=(const InterfacesInC&) = delete;
  ~InterfacesInC() override { EXPECT_EQ(fake::liveObjects(), 0); }

  Desktop interfaces() override {
    const Desktop world = system_.world().interfaces();
    return {world.ownProcessId, accessibility_,   world.workspace, world.screens,  world.pointer,   windowList_, trust_,
            hotKeys_,           world.keyMonitor, world.loginItem, world.settings, world.mainQueue, world.shell};
  }

 private:
  fake::FakeSystem system_;
  AxAccessibility accessibility_{[this] { return system_.now(); }};
  WindowList windowList_;
  AxTrust trust_;
  CarbonHotKeys hotKeys_;
};

class GoldenThroughInterfacesInC : public testing::TestWithParam<std::string> {};

TEST_P(GoldenThroughInterfacesInC, AScriptGivesTheSameTrace) {
  const auto trace = replay::replayed(GetParam(), [](auto& world) { return std::make_unique<InterfacesInC>(world); });
  EXPECT_EQ(replay::differenceOf(replay::expectedTrace(GetParam()), replay::traceOf(trace)), "");
  EXPECT_EQ(fake::registeredHotKeys(), 0U);
  EXPECT_EQ(fake::installedHandlers(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Scripts, GoldenThroughInterfacesInC, testing::ValuesIn(replay::scriptNames()), replay::scriptTestName);

}  // namespace
}  // namespace tilora::macos
