// Key presses and what follows them. Every round visits all programs, so that what else the machine does meets all alike.
#include <iostream>

#include "contestants.h"
#include "figures/programs.h"
#include "harness/server.h"
#include "run.h"

namespace tilora::bench {
namespace {

constexpr int crowdOfAllActions = 4;

/// In this order each action begins with the windows where the one before leaves them.
std::vector<Action> actionsOf(const std::string& program, int crowd) {
  const bool isScript = std::find(scripts.begin(), scripts.end(), program) != scripts.end();
  if (crowd != crowdOfAllActions || isScript) return {Action::move};
  return {Action::exchange, Action::restore, Action::move};
}

std::vector<std::string> measuresOf(const std::vector<Action>& actions) {
  std::vector<std::string> names;
  for (const Action action : actions)
    names.insert(names.end(), {nameOf(action) + measure::firstChange, nameOf(action) + measure::lastChange});
  return names;
}

/// A window manager may leave things behind on its server that slow down whatever comes after it: JWM does, by five milliseconds a move.
struct OwnServer {
  harness::ServerProcess process;
  harness::Display display{process.display()};
};

class LatencyBench {
 public:
  explicit LatencyBench(Run& run) : run_(run) {}

  void measureAll() {
    for (round_ = 1; round_ <= run_.options().rounds; ++round_) {
      for (const auto kind : harness::allWindowManagers) visitHost(kind);
      for (const std::string& name : tilers) visitTiler(name);
    }
  }

 private:
  using Start = std::function<std::unique_ptr<Contestant>(Desk&)>;
  struct Guest {
    std::string name;
    Start start;
  };

  /// Who is measured on a window manager; every other round in the reverse order.
  std::vector<Guest> guestsOf(harness::WindowManagerKind kind) const {
    const std::string host = harness::nameOf(kind);
    std::vector<Guest> guests = {{tiloraOn(host), [](Desk& desk) { return startTilora(desk, Run::besides("tilora"), true); }},
                                 {floorOn(host), [](Desk& desk) { return startFloor(desk, Run::besides("tilora-comparison-floor")); }}};
    if (host == firstHost) {
      for (const std::string& name : scripts) guests.push_back({name, [name](Desk& desk) { return startScript(desk, name); }});
    }
    std::erase_if(guests, [this](const Guest& guest) { return !run_.wants(guest.name); });
    if (round_ % 2 == 0) std::reverse(guests.begin(), guests.end());
    return guests;
  }

  void visitHost(harness::WindowManagerKind kind) {
    const std::vector<Guest> guests = guestsOf(kind);
    if (guests.empty()) return;
    OwnServer server;
    std::optional<Desk> desk;
    std::optional<harness::WindowManager> manager;
    const auto leave = [&] {
      if (desk) desk->closeAll();
      manager.reset();
      desk.reset();
    };
    for (const int crowd : run_.options().crowds) {
      for (const Guest& guest : guests) {
        attempt(guest.name, crowd, [&] {
          // After a failure nobody knows what the desktop is like: the next one begins anew.
          if (!manager) {
            leave();
            manager.emplace(kind, desk.emplace(server.process.display(), server.display).session(), server.display);
          }
          desk->setCrowd(static_cast<std::size_t>(crowd));
          try {
            measure(guest.name, crowd, *desk, *guest.start(*desk));
          } catch (...) {
            leave();
            throw;
          }
        });
      }
    }
    leave();
  }

  void visitTiler(const std::string& name) {
    if (!run_.wants(name)) return;
    OwnServer server;
    for (const int crowd : run_.options().crowds) {
      attempt(name, crowd, [&] {
        Desk desk(server.process.display(), server.display);
        desk.setCrowd(static_cast<std::size_t>(crowd));
        measure(name, crowd, desk, *startTiler(desk, name));
      });
    }
  }

  void attempt(const std::string& name, int crowd, const std::function<void()>& visit) {
    run_.attempt({round_, name, crowd, {}, {}, {}}, measuresOf(actionsOf(name, crowd)), visit);
  }

  void measure(const std::string& name, int crowd, Desk& desk, Contestant& contestant) {
    for (const Action action : actionsOf(name, crowd)) {
      // One action that fails leaves the others their chance; the desktop is looked at again by each of them.
      run_.attempt({round_, name, crowd, {}, {}, {}}, measuresOf({action}), [&] { measure(name, crowd, desk, contestant, action); });
    }
    std::cerr << "round " << round_ << ": " << name << ", " << crowd << " windows\n";
  }

  void measure(const std::string& name, int crowd, Desk& desk, Contestant& contestant, Action action) {
    const Turns turns = contestant.prepare(action);
    std::vector<double> firsts;
    std::vector<double> lasts;
    int missed = 0;
    contestant.takeOwnShare();
    // An even number: the next one finds the windows where this one found them, or its first key would change nothing.
    const int presses = run_.options().presses + run_.options().presses % 2;
    for (int i = 0; i < presses; ++i) {
      const bool isThere = i % 2 == 0;
      const auto sample = desk.measure(isThere ? turns.there : turns.back, action);
      if (!isThere && !turns.backCounts) continue;
      if (!sample) {
        ++missed;
        continue;
      }
      firsts.push_back(sample->first);
      lasts.push_back(sample->last);
    }
    const auto add = [&](const std::string& what, const std::vector<double>& values) {
      run_.add({round_, name, crowd, nameOf(action) + what, values, {}});
    };
    add(measure::firstChange, firsts);
    add(measure::lastChange, lasts);
    add(measure::ownShare, contestant.takeOwnShare());
    if (missed > 0) add(measure::missed, {static_cast<double>(missed)});
  }

  Run& run_;
  int round_ = 0;
};

}  // namespace

void measureLatency(Run& run) { LatencyBench(run).measureAll(); }

}  // namespace tilora::bench
