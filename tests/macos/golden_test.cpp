// The engine does the same through the macOS desktop as straight on the simulated one.
#include <gtest/gtest.h>

#include <string>

#include "c_interfaces.h"
#include "golden_scripts.h"
#include "trace_comparison.h"

namespace tilora::macos {
namespace {

class View final : public replay::DesktopView {
 public:
  explicit View(simulated::SimulatedDesktop& world) : desktop_(world) {}
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  ~View() override { EXPECT_EQ(fake::liveObjects(), 0); }

  Desktop interfaces() override { return desktop_.interfaces(); }

 private:
  InterfacesInC desktop_;
};

class GoldenThroughInterfacesInC : public testing::TestWithParam<std::string> {};

TEST_P(GoldenThroughInterfacesInC, AScriptGivesTheSameTrace) {
  const auto trace = replay::replayed(GetParam(), [](auto& world) { return std::make_unique<View>(world); });
  EXPECT_EQ(replay::differenceOf(replay::expectedTrace(GetParam()), replay::traceOf(trace)), "");
  EXPECT_EQ(fake::registeredHotKeys(), 0U);
  EXPECT_EQ(fake::installedHandlers(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Scripts, GoldenThroughInterfacesInC, testing::ValuesIn(replay::scriptNames()), replay::scriptTestName);

}  // namespace
}  // namespace tilora::macos
