// Processor time of programs that have nothing to do, and of key presses. A program's processor time is counted for itself, so that several
// may be left alone at the same time.
#include <fstream>
#include <iostream>
#include <thread>

#include "figures/programs.h"
#include "run.h"
#include "stage.h"
#include "usage.h"

namespace tilora::bench {
namespace {

using std::chrono::seconds;

constexpr seconds stretch{10};
constexpr seconds settling{3};
constexpr double nanosecondsOfMillisecond = 1e6;

/// A program whose processor time is counted.
class Scene {
 public:
  Scene(std::string program, int crowd) : program_(std::move(program)), stage_(program_, crowd, Probe::cost) {
    turns_ = stage_.contestant().prepare(Action::move);
  }

  const std::string& program() const { return program_; }

  /// In milliseconds: of the program and of everything that it ever started, and of the server.
  double processorTime() const {
    double sum = endedTime();
    for (const pid_t process : processes()) sum += usageOf(process).processorTime;
    return sum / nanosecondsOfMillisecond;
  }
  double serverTime() { return usageOf(stage_.server()).processorTime / nanosecondsOfMillisecond; }
  /// Presses the keys in turn; false when nothing follows.
  bool press() {
    there_ = !there_;
    return stage_.desk().measure(there_ ? turns_.there : turns_.back, Action::move).has_value();
  }

 private:
  std::vector<pid_t> processes() const {
    std::vector<pid_t> all;
    for (const pid_t ward : stage_.contestant().processes()) {
      const std::vector<pid_t> found = descendantsOf(ward);
      if (found.empty()) throw Failure("the program has ended");
      all.insert(all.end(), found.begin(), found.end());
    }
    return all;
  }

  /// Of the processes that have ended.
  double endedTime() const {
    double sum = 0;
    for (const auto& file : stage_.desk().costs()) {
      double nanoseconds = 0;
      std::ifstream(file) >> nanoseconds;
      sum += nanoseconds;
    }
    return sum;
  }

  std::string program_;
  Stage stage_;
  Turns turns_;
  bool there_ = false;
};

class TimeBench {
 public:
  TimeBench(Run& run, int crowd) : run_(run), crowd_(crowd) {}

  void measureAll() {
    for (const std::string& name : residents()) {
      if (!run_.wants(name)) continue;
      run_.attempt(entry(name), everything, [&] {
        scenes_.push_back(std::make_unique<Scene>(name, crowd_));
        std::cerr << "ready: " << name << ", " << crowd_ << " windows\n";
      });
    }
    std::this_thread::sleep_for(settling);
    leaveAlone();
    for (const auto& scene : scenes_) {
      run_.attempt(entry(scene->program()), {measure::pressCost}, [&] { add(*scene, measure::pressCost, pressCosts(*scene)); });
    }
  }

 private:
  static inline const std::vector<std::string> everything = {measure::idle, measure::idleServer, measure::pressCost};

  struct Times {
    double program = 0;
    double server = 0;
    std::chrono::steady_clock::time_point when;
  };

  Entry entry(const std::string& program) const { return {1, program, crowd_, {}, {}, {}}; }

  void add(const Scene& scene, const std::string& what, const std::vector<double>& values) {
    Entry filled = entry(scene.program());
    filled.measure = what;
    filled.values = values;
    run_.add(filled);
  }

  static std::optional<Times> timesOf(Scene& scene) {
    try {
      return Times{scene.processorTime(), scene.serverTime(), std::chrono::steady_clock::now()};
    } catch (const Failure&) {
      return std::nullopt;
    }
  }

  /// Nobody touches a desktop meanwhile.
  void leaveAlone() {
    std::vector<std::vector<std::optional<Times>>> times(scenes_.size());
    for (int elapsed = 0;; elapsed += static_cast<int>(stretch.count())) {
      for (std::size_t i = 0; i < scenes_.size(); ++i) times[i].push_back(timesOf(*scenes_[i]));
      if (elapsed >= run_.options().idleSeconds) break;
      std::this_thread::sleep_for(stretch);
    }
    for (std::size_t i = 0; i < scenes_.size(); ++i) {
      run_.attempt(entry(scenes_[i]->program()), {measure::idle, measure::idleServer}, [&] { addShares(*scenes_[i], times[i]); });
    }
  }

  void addShares(const Scene& scene, const std::vector<std::optional<Times>>& times) {
    std::vector<double> program;
    std::vector<double> server;
    for (std::size_t i = 1; i < times.size(); ++i) {
      if (!times[i - 1] || !times[i]) throw Failure("the program ended while nothing happened");
      const double elapsed = std::chrono::duration<double, std::milli>(times[i]->when - times[i - 1]->when).count();
      constexpr double perCent = 100;
      program.push_back((times[i]->program - times[i - 1]->program) / elapsed * perCent);
      server.push_back((times[i]->server - times[i - 1]->server) / elapsed * perCent);
    }
    add(scene, measure::idle, program);
    add(scene, measure::idleServer, server);
  }

  std::vector<double> pressCosts(Scene& scene) const {
    std::vector<double> costs;
    for (int i = 0; i < run_.options().presses; ++i) {
      const double before = scene.processorTime();
      if (!scene.press()) throw Failure("a key press had no effect");
      costs.push_back(scene.processorTime() - before);
    }
    return costs;
  }

  Run& run_;
  int crowd_;
  std::vector<std::unique_ptr<Scene>> scenes_;
};

}  // namespace

void measureProcessorTime(Run& run) {
  for (const int crowd : run.options().crowds) TimeBench(run, crowd).measureAll();
}

}  // namespace tilora::bench
