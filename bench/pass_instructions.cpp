// Runs the bare reads of some passes, then the passes, so that callgrind can count the instructions of each.
// Usage: pass_instructions TIMES WINDOWS WINDOWS_PER_APPLICATION SCREENS PREFERENCES PREFERENCES_PER_APPLICATION
#include <array>
#include <cstdlib>
#include <iostream>

#include "crowded_desktop.h"

namespace {

// Each is called once; their names are what collecting is switched on by. They must stay functions of their own.

[[gnu::noinline]] void measuredReads(tilora::bench::CrowdedDesktop& desktop, std::size_t times) {
  for (std::size_t i = 0; i < times; ++i) desktop.bareReads();
}

[[gnu::noinline]] void measuredPasses(tilora::bench::CrowdedDesktop& desktop, std::size_t times) {
  for (std::size_t i = 0; i < times; ++i) desktop.pass();
}

}  // namespace

int main(int argc, char** argv) {
  std::array<std::size_t, 6> numbers{};
  for (std::size_t i = 0; i < numbers.size() && i + 1 < static_cast<std::size_t>(argc); ++i) {
    numbers.at(i) = std::strtoul(argv[i + 1], nullptr, 10);
  }
  const auto [times, windows, each, screens, preferences, preferencesEach] = numbers;
  if (argc != 7 || each == 0 || screens == 0 || preferencesEach == 0) {
    std::cerr << "usage: pass_instructions TIMES WINDOWS WINDOWS_PER_APPLICATION SCREENS PREFERENCES PREFERENCES_PER_APPLICATION\n";
    return 2;
  }
  tilora::bench::CrowdedDesktop desktop({windows, each, screens, preferences, preferencesEach});
  measuredReads(desktop, times);
  measuredPasses(desktop, times);
  return 0;
}
