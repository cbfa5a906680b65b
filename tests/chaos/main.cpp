// tilora-chaos: storms over the real program on real desktops. Ends with the counts, and with status 1 when a window is lost or anything
// else is not as it has to be.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "calm.h"
#include "storm.h"

namespace tilora::chaos {
namespace {

using Clock = std::chrono::steady_clock;

struct Options {
  std::chrono::seconds duration{600};
  std::uint64_t seed = std::random_device()();
  std::string program = TILORA_PROGRAM;
  int actions = 60;
  std::vector<harness::WindowManagerKind> windowManagers = {harness::allWindowManagers.begin(), harness::allWindowManagers.end()};
};

Options optionsFrom(const std::vector<std::string>& arguments) {
  Options options;
  bool chosen = false;
  for (std::size_t index = 0; index + 1 < arguments.size(); index += 2) {
    const std::string& value = arguments[index + 1];
    if (arguments[index] == "--seconds") options.duration = std::chrono::seconds(std::stoi(value));
    if (arguments[index] == "--seed") options.seed = std::stoull(value);
    if (arguments[index] == "--program") options.program = value;
    if (arguments[index] == "--actions") options.actions = std::stoi(value);
    if (arguments[index] == "--on") {
      if (!std::exchange(chosen, true)) options.windowManagers.clear();
      options.windowManagers.push_back(harness::windowManagerNamed(value).value());
    }
  }
  return options;
}

/// A season: some storms on one desktop. In every second one Tilora is neither killed nor ended.
void season(const Options& options, Chance& chance, int number, Clock::time_point end, Counts& counts) {
  constexpr int storms = 4;
  const auto kind = options.windowManagers[static_cast<std::size_t>(number) % options.windowManagers.size()];
  Desk desk(kind, options.program, counts);
  Population population;
  Calm calm(desk, population, counts, TILORA_MEASURES_MEMORY);
  const bool kills = number % 2 == 0;
  desk.startTilora();
  for (int count = 0; count < storms && (count == 0 || Clock::now() < end); ++count) {
    const Counts before = counts;
    const auto began = Clock::now();
    Storm storm(desk, population, chance, counts, kills);
    storm.rage(options.actions);
    ++counts.storms;
    calm.inspect(kills && chance.oneIn(2));
    std::cout << "storm " << counts.storms << " that began on " << harness::nameOf(kind) << ": " << population.windows(true).size()
              << " windows, " << std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - began).count() << " ms" << std::endl;
    if (counts.lost == before.lost && counts.faults.size() == before.faults.size()) continue;
    std::cout << "what had happened:\n";
    for (const std::string& line : storm.trace()) std::cout << "  " << line << "\n";
    std::cout << std::flush;
  }
  desk.endTilora();
}

int run(const Options& options) {
  std::cout << "seed " << options.seed << ", " << options.duration.count() << " s" << std::endl;
  Chance chance(options.seed);
  Counts counts;
  const auto end = Clock::now() + options.duration;
  for (int number = 0; number == 0 || Clock::now() < end; ++number) {
    try {
      season(options, chance, number, end, counts);
    } catch (const std::exception& failure) {
      std::cout << "FAULT: " << failure.what() << std::endl;
      counts.faults.emplace_back(failure.what());
    }
  }
  std::cout << counts << "seed: " << options.seed << std::endl;
  return counts.isGood() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace tilora::chaos

int main(int argc, char** argv) {
  using namespace tilora::chaos;
  return run(optionsFrom(std::vector<std::string>(argv + 1, argv + argc)));
}
