// Starting programs over windows that are open already, and the memory that they take then.
#include <iostream>

#include "contestants.h"
#include "figures/programs.h"
#include "harness/server.h"
#include "run.h"
#include "scene.h"
#include "usage.h"

namespace tilora::bench {
namespace {

/// The start of one program over a crowd, each time on a server and in a session that have seen nothing before.
class Start {
 public:
  Start(std::string program, int crowd) : program_(std::move(program)) {
    desk_.setCrowd(static_cast<std::size_t>(crowd));
    if (!isTiler(program_)) host_.emplace(harness::WindowManagerKind::openbox, desk_.session(), display_);
    desk_.openCrowd();
    // As a window manager before it would have left them: bspwm takes no others.
    if (isTiler(program_)) {
      for (const xcb_window_t window : desk_.windows()) display_.setCardinals(window, "_NET_WM_DESKTOP", "CARDINAL", {0});
    }
    if (host_) {
      display_.activate(desk_.windows().front());
      desk_.expect("a window is active", [&] { return display_.activeWindow() == desk_.windows().front(); });
    }
    desk_.session().home().write("config/tilora/consent.json", R"({"Tilora.Consent":{"type":"bool","value":true}})");
    desk_.waitUntilQuiet();
  }

  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;
  ~Start() {
    desk_.closeAll();
    while (!processes_.empty()) processes_.pop_back();
  }

  Sample measure() {
    const auto press = [&] { desk_.press(toTheRight); };
    const auto sample = desk_.measureStart([&] { start(); }, isScript(program_) ? std::function<void()>(press) : nullptr);
    if (!sample) throw Failure("it tiles nothing");
    return *sample;
  }

  /// Of everything that was started, in kB. No other program of its kind runs, which would share pages with it.
  double memory(const std::string& figure) const {
    long sum = 0;
    for (const auto& process : processes_) {
      sum += memoryOf(process.pid(), figure);
      for (const pid_t child : descendantsOf(process.pid())) sum += memoryOf(child, figure);
    }
    return static_cast<double>(sum);
  }

 private:
  void start() {
    if (isTiler(program_)) {
      processes_ = startPrograms(desk_, program_);
    } else if (program_ == tiloraOn(firstHost)) {
      processes_.push_back(desk_.start({Run::besides("tilora").string()}));
    } else {
      processes_.push_back(startKeyDaemon(desk_, program_));
    }
  }

  std::string program_;
  harness::ServerProcess server_;
  harness::Display display_{server_.display()};
  Desk desk_{server_.display(), display_};
  std::optional<harness::WindowManager> host_;
  std::vector<harness::ManagedProcess> processes_;
};

const std::string first = measure::start + measure::firstChange;
const std::string last = measure::start + measure::lastChange;

}  // namespace

void measureStarts(Run& run) {
  for (int round = 1; round <= run.options().starts; ++round) {
    for (const int crowd : run.options().crowds) {
      for (const std::string& name : residents()) {
        if (!run.wants(name)) continue;
        run.attempt({round, name, crowd, {}, {}, {}}, {first, last, measure::resident, measure::proportional}, [&] {
          Start start(name, crowd);
          const Sample sample = start.measure();
          const double resident = start.memory("Rss:");
          const double proportional = start.memory("Pss:");
          run.add({round, name, crowd, first, {sample.first}, {}});
          run.add({round, name, crowd, last, {sample.last}, {}});
          run.add({round, name, crowd, measure::resident, {resident}, {}});
          run.add({round, name, crowd, measure::proportional, {proportional}, {}});
        });
      }
      std::cerr << "start " << round << ", " << crowd << " windows\n";
    }
  }
}

}  // namespace tilora::bench
