// The golden scripts through the whole of the macOS desktop.
#include <gtest/gtest.h>

#include <string>

#include "golden_scripts.h"
#include "objective_c/whole_desktop.h"
#include "trace_comparison.h"

namespace tilora::macos {
namespace {

class View final : public replay::DesktopView {
 public:
  explicit View(simulated::SimulatedDesktop& world) : desktop_(world) {}

  Desktop interfaces() override { return desktop_.interfaces(); }

 private:
  WholeDesktop desktop_;
};

class GoldenThroughTheWholeDesktop : public testing::TestWithParam<std::string> {};

TEST_P(GoldenThroughTheWholeDesktop, AScriptGivesTheSameTrace) {
  const auto trace = replay::replayed(GetParam(), [](auto& world) { return std::make_unique<View>(world); });
  EXPECT_EQ(replay::differenceOf(replay::expectedTrace(GetParam()), replay::traceOf(trace)), "");
}

INSTANTIATE_TEST_SUITE_P(Scripts, GoldenThroughTheWholeDesktop, testing::ValuesIn(replay::scriptNames()), replay::scriptTestName);

}  // namespace
}  // namespace tilora::macos
