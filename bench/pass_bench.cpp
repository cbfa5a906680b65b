// How long one pass takes for each window, beside the time that its reads alone take.
#include <benchmark/benchmark.h>

#include <cstddef>

#include "crowded_desktop.h"

namespace tilora::bench {
namespace {

/// Windows, windows an application, screens, stored choices.
void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"windows", "each", "screens", "choices"})->Unit(benchmark::kMicrosecond);
  for (const std::int64_t windows : {10, 100, 1'000, 10'000, 100'000}) {
    for (const std::int64_t each : {std::int64_t{1}, std::int64_t{10}, windows}) benchmark->Args({windows, each, 2, 50});
  }
  for (const std::int64_t screens : {1, 4, 16}) benchmark->Args({1'000, 10, screens, 50});
  for (const std::int64_t choices : {0, 1'000, 10'000}) benchmark->Args({1'000, 10, 2, choices});
}

CrowdedDesktop crowd(const benchmark::State& state) {
  const auto argument = [&](std::size_t index) { return static_cast<std::size_t>(state.range(index)); };
  return CrowdedDesktop({.windows = argument(0), .windowsPerApplication = argument(1), .screens = argument(2), .preferences = argument(3)});
}

/// Reports the time of one window, in seconds with a metric prefix.
void countWindows(benchmark::State& state) {
  state.counters["window"] =
      benchmark::Counter(static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void pass(benchmark::State& state) {
  auto desktop = crowd(state);
  for (auto _ : state) desktop.pass();
  countWindows(state);
}

void bareReads(benchmark::State& state) {
  auto desktop = crowd(state);
  for (auto _ : state) benchmark::DoNotOptimize(desktop.bareReads());
  countWindows(state);
}

BENCHMARK(pass)->Apply(sizes);
BENCHMARK(bareReads)->Apply(sizes);

}  // namespace
}  // namespace tilora::bench
