// Key presses and what follows them. The programs of a group press in turn, so that whatever else the machine does meets all of them alike.
#include <algorithm>
#include <iostream>
#include <random>

#include "figures/programs.h"
#include "machine.h"
#include "run.h"
#include "stage.h"

namespace tilora::bench {
namespace {

constexpr int crowdOfAllActions = 4;

/// Of each window manager Tilora and the floor; with the first, all that run without Tilora.
std::vector<std::vector<std::string>> groups() {
  std::vector<std::vector<std::string>> all;
  for (const std::string& host : hosts) {
    auto& group = all.emplace_back(std::vector{tiloraOn(host), floorOn(host)});
    if (host != firstHost) continue;
    group.insert(group.end(), scripts.begin(), scripts.end());
    group.insert(group.end(), tilers.begin(), tilers.end());
  }
  return all;
}

/// In this order each action begins with the windows where the one before leaves them.
std::vector<Action> actionsOf(const std::string& program, int crowd) {
  if (crowd != crowdOfAllActions || isScript(program)) return {Action::move};
  return {Action::exchange, Action::restore, Action::move};
}

std::vector<std::string> measuresOf(const std::vector<Action>& actions) {
  std::vector<std::string> names;
  for (const Action action : actions)
    names.insert(names.end(), {nameOf(action) + measure::firstChange, nameOf(action) + measure::lastChange});
  return names;
}

/// The host of a virtual machine may have given so much of the processors to others during a press that counts; the system tells it in
/// such steps.
constexpr double mostStolenTicks = 1;
/// A press that does not count is made again, but not for ever: so many presses for each that shall count.
constexpr int mostTries = 6;

/// What the presses of one action have shown so far.
struct Presses {
  Turns turns;
  int made = 0;
  std::vector<double> firsts;
  std::vector<double> lasts;
  std::vector<double> ownShares;
  int missed = 0;
  int disturbed = 0;

  /// An even number is made: the next action finds the windows where this one found them, or its first key would change nothing.
  bool isNextThere() const { return made % 2 == 0; }
  bool areEnough(int wanted) const {
    const int counted = static_cast<int>(lasts.size()) + missed;
    return isNextThere() && (counted * (turns.backCounts ? 1 : 2) >= wanted || made >= wanted * mostTries);
  }
};

/// A program of a group.
struct Member {
  std::string program;
  std::unique_ptr<Stage> stage;
  Presses presses;
};

class LatencyBench {
 public:
  explicit LatencyBench(Run& run) : run_(run) {}

  void measureAll() {
    for (round_ = 1; round_ <= run_.options().rounds; ++round_) {
      for (const auto& group : groups()) {
        for (const int crowd : run_.options().crowds) visit(group, crowd);
      }
    }
  }

 private:
  void visit(const std::vector<std::string>& group, int crowd) {
    std::vector<Member> members;
    for (const std::string& program : group) {
      if (!run_.wants(program)) continue;
      run_.attempt(entry(program, crowd), measuresOf(actionsOf(program, crowd)), [&] {
        members.push_back({program, std::make_unique<Stage>(program, crowd, Probe::ownShare), {}});
        std::cerr << "round " << round_ << ": " << program << ", " << crowd << " windows\n";
      });
    }
    for (const Action action : {Action::exchange, Action::restore, Action::move}) measure(members, crowd, action);
  }

  void measure(std::vector<Member>& members, int crowd, Action action) {
    std::vector<Member*> prepared;
    // One that fails leaves the others their chance, and itself one with the next action, before which the desktop is looked at again.
    const auto attempt = [&](Member& member, const std::function<void()>& step) {
      return run_.attempt(entry(member.program, crowd), measuresOf({action}), step);
    };
    for (Member& member : members) {
      const std::vector<Action> actions = actionsOf(member.program, crowd);
      if (std::find(actions.begin(), actions.end(), action) == actions.end()) continue;
      if (attempt(member, [&] { prepare(member, action); })) prepared.push_back(&member);
    }
    // What was measured before a failure counts.
    const auto needsNoMore = [&](Member* member) { return member->presses.areEnough(run_.options().presses); };
    std::vector<Member*> pressing = prepared;
    while (!pressing.empty()) {
      // Nobody always comes after the same one, which may have left the processor busy.
      std::shuffle(pressing.begin(), pressing.end(), order_);
      std::erase_if(pressing, [&](Member* member) { return !attempt(*member, [&] { press(*member, action); }) || needsNoMore(member); });
    }
    for (const Member* member : prepared) add(*member, crowd, action);
  }

  static void prepare(Member& member, Action action) {
    member.presses = {};
    member.presses.turns = member.stage->contestant().prepare(action);
    member.stage->contestant().takeOwnShare();
  }

  static void press(Member& member, Action action) {
    Presses& presses = member.presses;
    const bool isThere = presses.isNextThere();
    const double before = processorTicks().stolen;
    const auto sample = member.stage->desk().measure(isThere ? presses.turns.there : presses.turns.back, action);
    const bool isDisturbed = processorTicks().stolen - before > mostStolenTicks;
    const auto shares = member.stage->contestant().takeOwnShare();
    ++presses.made;
    if (!isThere && !presses.turns.backCounts) return;
    if (isDisturbed) {
      ++presses.disturbed;
    } else if (sample) {
      presses.firsts.push_back(sample->first);
      presses.lasts.push_back(sample->last);
      presses.ownShares.insert(presses.ownShares.end(), shares.begin(), shares.end());
    } else {
      ++presses.missed;
    }
  }

  void add(const Member& member, int crowd, Action action) {
    const Presses& presses = member.presses;
    Entry filled = entry(member.program, crowd);
    const auto add = [&](const std::string& what, const std::vector<double>& values) {
      filled.measure = nameOf(action) + what;
      filled.values = values;
      run_.add(filled);
    };
    add(measure::firstChange, presses.firsts);
    add(measure::lastChange, presses.lasts);
    add(measure::ownShare, presses.ownShares);
    if (presses.missed > 0) add(measure::missed, {static_cast<double>(presses.missed)});
    if (presses.disturbed > 0) add(measure::disturbed, {static_cast<double>(presses.disturbed)});
    if (presses.lasts.empty() && presses.missed == 0 && presses.disturbed > 0) {
      run_.attempt(entry(member.program, crowd), measuresOf({action}),
                   [] { throw Failure("other machines had the processors all the time"); });
    }
  }

  Entry entry(const std::string& program, int crowd) const { return {round_, program, crowd, {}, {}, {}}; }

  Run& run_;
  int round_ = 0;
  /// The same order in each run.
  std::minstd_rand order_;
};

}  // namespace

void measureLatency(Run& run) { LatencyBench(run).measureAll(); }

}  // namespace tilora::bench
