// tilora-latency [--rounds N] [--presses N] [--only NAME]... [--output FILE]: measures, in one run on one X server, how long after a key
// press the windows concerned are first and last configured, for Tilora on each window manager, for a bare client on the same, and for
// window managers that tile by themselves. Every round visits all of them, so that what else the machine does meets all alike. The tables
// go to standard output, and to FILE with what they mean.
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iostream>
#include <string_view>

#include "contestants.h"
#include "harness/server.h"

namespace tilora::latency {
namespace {

struct Options {
  int rounds = 3;
  int presses = 20;
  /// Names of contestants; empty: all of them.
  std::vector<std::string> only;
  std::filesystem::path output;
};

/// In this order each action begins with the windows where the one before leaves them.
constexpr std::array order = {Action::exchange, Action::restore, Action::move};

class Bench {
 public:
  explicit Bench(Options options) : options_(std::move(options)) {}

  void run() {
    for (int round = 0; round < options_.rounds; ++round) {
      for (const auto kind : harness::allWindowManagers) visit(kind, round % 2 == 0);
      for (const Tiler& tiler : tilers()) visit(tiler);
    }
  }

  const Results& results() const { return results_; }
  const std::vector<std::string>& failures() const { return failures_; }

 private:
  bool isWanted(const std::string& name) const {
    return options_.only.empty() || std::find(options_.only.begin(), options_.only.end(), name) != options_.only.end();
  }

  void visit(harness::WindowManagerKind kind, bool tiloraFirst) {
    const bool wantsTilora = isWanted(tiloraOn(kind));
    const bool wantsFloor = isWanted(floorOn(kind));
    if (!wantsTilora && !wantsFloor) return;
    attempt(harness::nameOf(kind), [&] {
      Desk desk(server_.display(), display_);
      const harness::WindowManager manager(kind, desk.session(), display_);
      for (const bool isTilora : {tiloraFirst, !tiloraFirst}) {
        if (isTilora && wantsTilora) measure(tiloraOn(kind), desk, *startTilora(desk, besides("tilora")));
        if (!isTilora && wantsFloor) measure(floorOn(kind), desk, *startFloor(desk, besides("tilora-latency-floor")));
      }
      desk.closeAll();
    });
  }

  void visit(const Tiler& tiler) {
    if (!isWanted(tiler.name)) return;
    attempt(tiler.name, [&] {
      Desk desk(server_.display(), display_);
      measure(tiler.name, desk, *tiler.start(desk));
    });
  }

  void attempt(const std::string& what, const std::function<void()>& visit) {
    try {
      visit();
    } catch (const std::exception& exception) {
      failures_.push_back(what + ": " + exception.what());
      std::cerr << failures_.back() << "\n";
    }
  }

  void measure(const std::string& name, Desk& desk, Contestant& contestant) {
    for (const Action action : order) {
      attempt(name + ", " + nameOf(action), [&] {
        const Turns turns = contestant.prepare(action);
        Samples& samples = results_[action][name];
        contestant.takeOwnShare();
        for (int i = 0; i < options_.presses; ++i) {
          const bool isThere = i % 2 == 0;
          const auto sample = desk.measure(isThere ? turns.there : turns.back, action);
          if (!isThere && !turns.backCounts) continue;
          if (sample) {
            samples.all.push_back(*sample);
          } else {
            ++samples.missed;
          }
        }
        std::ranges::copy(contestant.takeOwnShare(), std::back_inserter(samples.ownShare));
      });
    }
    std::cerr << name << " measured\n";
  }

  /// A program that was built beside this one.
  static std::filesystem::path besides(const char* name) { return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name; }

  Options options_;
  harness::ServerProcess server_;
  harness::Display display_{server_.display()};
  Results results_;
  std::vector<std::string> failures_;
};

std::string processor() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (const auto colon = line.find(": "); line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
  }
  return "an unknown processor";
}

/// How many programs wanted to run at a time, in the last minute.
std::string load() {
  std::ifstream file("/proc/loadavg");
  std::string lastMinute;
  file >> lastMinute;
  return lastMinute;
}

std::string explained(const std::string& tables, const Options& options, const std::string& loadBefore) {
  return "# Latency\n\n"
         "Milliseconds from a key press (XTEST) to the first and to the last event of the windows concerned, with four windows on one Xvfb "
         "of\n"
         "1600 x 900 pixels; made by `make bench-latency OUTPUT=docs/latency.md` on " +
         processor() + " with " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + " cores (load " + loadBefore + " at the beginning, " +
         load() + " at the end), in " + std::to_string(options.rounds) + " rounds of " + std::to_string(options.presses) +
         "\npresses for each action. Rounds visit all programs in turn; presses come at uneven intervals, out of step with every clock. "
         "The "
         "bare client\nsends, on the same keys, the requests that have to be sent and does nothing else: on that window manager nobody can "
         "be "
         "faster.\n\n"
         "- Move: the active window goes to the other half; the events are ConfigureNotify. A tiling window manager moves it to the other "
         "side "
         "of its\n  neighbour, which moves too, on a desktop with all four windows.\n"
         "- Pair exchange: the active window goes to the other half, its partner there is hidden and another one comes back on the free "
         "side. "
         "A tiling\n  window manager lets two windows on a desktop of their own change places.\n"
         "- Restore: the active window leaves the whole screen for the left half, and its partner comes back on the right one. A tiling "
         "window "
         "manager\n  switches from an empty desktop to one with two windows.\n\n"
         "For the last two, showing, hiding and the state properties count besides ConfigureNotify.\n\n"
         "Tilora's own share is the time from reading the key press to writing the last request of that turn, waiting for the server's "
         "answers\nincluded.\n\n" +
         tables;
}

std::optional<Options> parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; i += 2) {
    const std::string_view name = argv[i];
    if (i + 1 == argc) return std::nullopt;
    const std::string value = argv[i + 1];
    const auto number = [&](int& target) { return std::from_chars(value.data(), value.data() + value.size(), target).ec == std::errc(); };
    if (name == "--only") {
      options.only.push_back(value);
    } else if (name == "--output") {
      options.output = value;
    } else if (!(name == "--rounds" && number(options.rounds)) && !(name == "--presses" && number(options.presses))) {
      return std::nullopt;
    }
  }
  return options;
}

}  // namespace
}  // namespace tilora::latency

int main(int argc, char** argv) {
  using namespace tilora::latency;
  const auto options = parse(argc, argv);
  if (!options) {
    std::cerr << "usage: tilora-latency [--rounds N] [--presses N] [--only NAME]... [--output FILE]\n";
    return 2;
  }
  const std::string loadBefore = load();
  Bench bench(*options);
  bench.run();
  const std::string result = tables(bench.results(), contestantNames());
  std::cout << result;
  if (!options->output.empty()) std::ofstream(options->output) << explained(result, *options, loadBefore);
  for (const std::string& failure : bench.failures()) std::cerr << "Not measured: " << failure << "\n";
  return bench.failures().empty() ? 0 : 1;
}
