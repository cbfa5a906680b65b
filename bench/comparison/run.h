// One run of the comparison: its settings, and the file that it writes as it goes.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "figures/record.h"

namespace tilora::bench {

struct Options {
  int rounds = 1;
  /// Key presses for each action, program, number of windows and round; one more when it is odd.
  int presses = 20;
  /// How long nothing is done while processor time is taken.
  int idleSeconds = 60;
  int starts = 3;
  std::vector<int> crowds = {4, 20, 100, 500};
  /// After this no measurement is begun any more.
  int minutes = 100;
  /// Names of programs; empty: all of them.
  std::vector<std::string> only;
  /// "time", "start", "latency"; empty: all of them.
  std::vector<std::string> parts;
  std::filesystem::path data;
  /// Goes on with a file that is there.
  bool append = false;
};

/// Where the parts of the bench put what they measure. Every entry is in the file as soon as it is there.
class Run {
 public:
  explicit Run(Options options);

  const Options& options() const { return options_; }
  bool wants(const std::string& program) const;
  bool wantsPart(const std::string& part) const;
  void note(const std::string& fact, const std::string& text);
  void add(const Entry& entry);
  /// Does something that measures `measures` of a program. When it throws, that is what is noted for each of them, and the answer is no.
  bool attempt(const Entry& what, const std::vector<std::string>& measures, const std::function<void()>& measure);
  bool failed() const { return failed_; }

  /// A program that was built beside this one.
  static std::filesystem::path besides(const char* name);

 private:
  void write(const std::string& line);

  Options options_;
  std::chrono::steady_clock::time_point end_;
  std::ofstream file_;
  bool failed_ = false;
};

/// How long key presses take to show: each program on a server of its own, press by press in turn.
void measureLatency(Run& run);
/// Processor time of the programs that run all the time, each on a server of its own at the same time; then what a key press costs.
void measureProcessorTime(Run& run);
/// From starting a program to the first tiled window, and its memory then.
void measureStarts(Run& run);

}  // namespace tilora::bench
