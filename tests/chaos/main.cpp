// tilora-chaos: storms over the real program on real desktops. Ends with the counts, and with status 1 when a window is lost or anything
// else is not as it has to be. What other programs did wrong, which is part of the weather, goes to the error output.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>
#include <utility>
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

/// Storms on one desktop after the other, until the time is over.
class Weather {
 public:
  explicit Weather(const Options& options) : options_(options) {}

  /// Each window manager has one storm at least, however long that takes. After that no storm begins that would not end in time, if it were
  /// as long as the longest one so far.
  Counts run() {
    for (std::size_t number = 0; number < options_.windowManagers.size() || isTimeFor(end_); ++number) {
      try {
        season(number);
      } catch (const std::exception& failure) {
        std::cout << "FAULT: " << failure.what() << std::endl;
        counts_.faults.emplace_back(failure.what());
      }
    }
    return counts_;
  }

 private:
  bool isTimeFor(Clock::time_point end) const { return Clock::now() + longest_ < end; }

  /// Some storms on one desktop. In every second season Tilora is neither killed nor ended.
  void season(std::size_t number) {
    constexpr int storms = 4;
    const auto seasonEnd = std::min(end_, Clock::now() + options_.duration / static_cast<long>(options_.windowManagers.size()));
    const auto kind = options_.windowManagers[number % options_.windowManagers.size()];
    Desk desk(kind, options_.program, counts_);
    try {
      desk.startTilora();
      Population population;
      Calm calm(desk, population, counts_, chance_);
      const bool kills = number % 2 == 0;
      for (int count = 0; count < storms && (count == 0 || isTimeFor(seasonEnd)); ++count) {
        storm(desk, population, calm, kills, harness::nameOf(kind));
      }
      desk.endTilora();
    } catch (const std::exception&) {
      if (!desk.serverEnds()) throw;
      ++counts_.serversFailed;
      std::clog << "the X server has ended by itself: " << desk.describeServer() << std::endl;
      desk.expectTiloraEndedWithTheServer();
    }
  }

  void storm(Desk& desk, Population& population, Calm& calm, bool kills, const std::string& manager) {
    const auto before = std::pair(counts_.lost, counts_.faults.size());
    const auto began = Clock::now();
    Storm storm(desk, population, chance_, counts_, kills);
    storm.rage(options_.actions);
    ++counts_.storms;
    ++counts_.stormsByManager[manager];
    calm.inspect(kills && chance_.oneIn(2));
    const auto took = Clock::now() - began;
    longest_ = std::max(longest_, took);
    std::cout << "storm " << counts_.storms << " that began on " << manager << ": " << population.windows(true).size() << " windows, "
              << std::chrono::duration_cast<std::chrono::milliseconds>(took).count() << " ms";
    if (const auto holdings = desk.tiloraHoldings()) {
      std::cout << "; life " << desk.tiloraLives() << " holds " << holdings->ownKilobytes << " kB of its own";
    }
    std::cout << std::endl;
    if (std::pair(counts_.lost, counts_.faults.size()) == before) return;
    std::cout << "what had happened:\n";
    for (const std::string& line : storm.trace()) std::cout << "  " << line << "\n";
    std::cout << std::flush;
  }

  const Options& options_;
  Chance chance_{options_.seed};
  Counts counts_;
  Clock::time_point end_ = Clock::now() + options_.duration;
  Clock::duration longest_{};
};

/// A client that has gone is a failed write, and not the end of the driver. Its children have the signal still.
void blockSignalOfBrokenPipes() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGPIPE);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
}

int run(const Options& options) {
  blockSignalOfBrokenPipes();
  std::cout << "seed " << options.seed << ", " << options.duration.count() << " s" << std::endl;
  const Counts counts = Weather(options).run();
  std::cout << counts << "seed: " << options.seed << std::endl;
  return counts.isGood() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace tilora::chaos

int main(int argc, char** argv) {
  using namespace tilora::chaos;
  return run(optionsFrom(std::vector<std::string>(argv + 1, argv + argc)));
}
