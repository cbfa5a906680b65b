// tilora-faults: makes each call of the program that can fail do so once, one life of the program after the other, and says what came of
// it.
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "trial.h"
#include "x_proxy.h"

namespace tilora::faults {
namespace {

/// A program that makes more calls than this in a trial makes them for ever.
constexpr int mostCalls = 5000;
/// A sweep that finds this much has found enough.
constexpr int enoughFailures = 5;

/// A machine that is busy may take longer than a trial waits; without a fault it is asked so often more.
constexpr int mostRepeats = 2;

/// A trial in which the fault was not reached: everything has to work.
constexpr const char* noFault = "none";

/// What came of one kind of fault.
struct Tally {
  int trials = 0;
  int tiled = 0;
  int stored = 0;
  std::map<std::string, int> ends = {};
};

class Sweep {
 public:
  explicit Sweep(std::string name) : name_(std::move(name)) {}

  void count(const std::string& what, const std::string& which, const Outcome& outcome) {
    Tally& tally = tallies_[what];
    ++tally.trials;
    tally.tiled += outcome.tiled ? 1 : 0;
    tally.stored += outcome.placeIsStored ? 1 : 0;
    ++tally.ends[harness::describe(outcome.end) + (outcome.isAskedTwice ? " when asked again" : "")];
    for (const std::string& failure : outcome.failures) fail(what, which, failure);
    if (what == noFault && !outcome.tiled) fail(what, which, "nothing is tiled");
    if (what == noFault && !outcome.placeIsStored) fail(what, which, "nothing is stored");
  }
  bool hasEnough() const { return failures_ >= enoughFailures; }

  /// Whether something was made to fail.
  bool hasFault() const {
    return std::ranges::any_of(tallies_, [](const auto& entry) { return entry.first != noFault; });
  }

  /// True: something was made to fail, and nothing came of it that must not.
  bool conclude() const {
    std::cout << name_ << ":\n";
    for (const auto& [what, tally] : tallies_) {
      std::cout << "  " << what << ": " << tally.trials << " trials, tiled in " << tally.tiled << ", stored in " << tally.stored;
      for (const auto& [end, number] : tally.ends) std::cout << ", " << end << " in " << number;
      std::cout << "\n";
    }
    std::cout << "  failures: " << failures_ << std::endl;
    if (!hasFault()) std::cout << "FAILURE: no call was made to fail" << std::endl;
    return failures_ == 0 && hasFault();
  }

 private:
  void fail(const std::string& what, const std::string& which, const std::string& failure) {
    ++failures_;
    std::cout << "FAILURE at " << which << " (" << what << "): " << failure << std::endl;
  }

  std::string name_;
  std::map<std::string, Tally> tallies_;
  int failures_ = 0;
};

/// The first call that was made to fail; empty: none was.
std::string firstIn(const std::filesystem::path& log) {
  std::ifstream stream(log);
  std::string line;
  std::getline(stream, line);
  return line;
}

/// Which of the faults that can be made: the number of the first, and how many further on the next one is.
struct Steps {
  int every = 1;
  int first = 1;
};

bool sweepCalls(Trials& trials, const Steps& steps) {
  Sweep sweep("calls to the system, each failing once");
  const auto log = trials.session().home().path() / "faults.log";
  for (int number = steps.first; number < mostCalls && !sweep.hasEnough(); number += steps.every) {
    std::filesystem::remove(log);
    const Outcome outcome = trials.run(
        {{"LD_PRELOAD", TILORA_FAILING_CALLS}, {"TILORA_FAULT_NUMBER", std::to_string(number)}, {"TILORA_FAULT_LOG", log.string()}});
    const std::string call = firstIn(log);
    sweep.count(call.empty() ? noFault : call, "call " + std::to_string(number), outcome);
    if (call.empty()) break;
  }
  return sweep.conclude();
}

bool sweepKinds(Trials& trials) {
  Sweep sweep("calls to the system, all of a kind failing");
  const auto log = trials.session().home().path() / "faults.log";
  for (const char* kind : {"open-to-write", "open-to-read", "write", "read", "fsync", "ftruncate", "fchmod", "flock", "rename", "stat",
                           "lstat", "readlink", "pthread_create", "fcntl", "poll"}) {
    std::filesystem::remove(log);
    Outcome outcome = trials.run({{"LD_PRELOAD", TILORA_FAILING_CALLS}, {"TILORA_FAULT_KIND", kind}, {"TILORA_FAULT_LOG", log.string()}});
    if (firstIn(log) != kind) outcome.failures.emplace_back("no such call was made");
    sweep.count(kind, kind, outcome);
  }
  return sweep.conclude();
}

/// A connection that is cut ends the program, and well only where that was its end anyway.
bool endsAsAfterACut(const Outcome& outcome) {
  if (!outcome.end || outcome.isAskedTwice) return false;
  return outcome.end->status == 1 || (outcome.end->status == 0 && outcome.tiled && outcome.placeIsStored);
}

bool sweepServer(Trials& trials, ProxyFault::Kind kind, const std::string& name, const Steps& steps) {
  Sweep sweep(name);
  for (int number = steps.first; number < mostCalls && !sweep.hasEnough(); number += steps.every) {
    const XProxy proxy(trials.display(), {.kind = kind, .number = number});
    Outcome outcome = trials.run({{"DISPLAY", proxy.display()}});
    for (int repeat = 0; repeat < mostRepeats && !proxy.fired() && !outcome.tiled && outcome.failures.empty(); ++repeat) {
      outcome = trials.run({});
    }
    if (kind == ProxyFault::Kind::cut && proxy.fired() && !endsAsAfterACut(outcome)) {
      outcome.failures.push_back("it does not end with the connection: " + harness::describe(outcome.end));
    }
    sweep.count(proxy.fired() ? "request " + std::to_string(proxy.opcode()) : std::string(noFault), "number " + std::to_string(number),
                outcome);
    if (!proxy.fired()) break;
  }
  return sweep.conclude();
}

bool run(const std::string& sweep, const Steps& steps, const std::string& program) {
  Trials trials(program);
  if (sweep == "calls") return sweepCalls(trials, steps);
  if (sweep == "kinds") return sweepKinds(trials);
  if (sweep == "errors") return sweepServer(trials, ProxyFault::Kind::error, "replies of the X server, each an error once", steps);
  if (sweep == "cuts") return sweepServer(trials, ProxyFault::Kind::cut, "connections cut after a request", steps);
  if (sweep == "delays") return sweepServer(trials, ProxyFault::Kind::withhold, "replies of the X server, each withheld once", steps);
  std::cout << "tilora-faults calls|kinds|errors|cuts|delays [EVERY [FIRST [PROGRAM]]]\n";
  return false;
}

}  // namespace
}  // namespace tilora::faults

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  try {
    const tilora::faults::Steps steps = {.every = arguments.size() > 1 ? std::stoi(arguments[1]) : 1,
                                         .first = arguments.size() > 2 ? std::stoi(arguments[2]) : 1};
    const std::string program = arguments.size() > 3 ? arguments[3] : TILORA_PROGRAM;
    return tilora::faults::run(arguments.empty() ? std::string() : arguments[0], steps, program) ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cout << "FAILURE: " << failure.what() << std::endl;
    return EXIT_FAILURE;
  }
}
