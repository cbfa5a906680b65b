// Tilora itself, driven as its user drives it.
#include <algorithm>
#include <csignal>
#include <fstream>

#include "contestants.h"
#include "scene.h"

namespace tilora::bench {
namespace {

class Tilora : public Contestant {
 public:
  Tilora(Desk& desk, const std::filesystem::path& program, bool share) : desk_(desk) {
    desk_.openCrowd();
    desk_.session().home().write("config/tilora/consent.json", R"({"Tilora.Consent":{"type":"bool","value":true}})");
    desk_.session().resetSettings();
    activate(0);
    desk_.expectFree(tiloraKeys);
    const harness::Environment module = {{"LD_PRELOAD", (program.parent_path() / "tilora-key-share.so").string()},
                                         {"KEY_SHARE_FILE", shares_.string()}};
    process_ = desk_.start({program.string()}, share ? module : harness::Environment{});
    expectShown({0});
  }

  Tilora(const Tilora&) = delete;
  Tilora& operator=(const Tilora&) = delete;
  ~Tilora() override {
    process_->signal(SIGTERM);
    process_->waitForEnd(std::chrono::seconds(30));
  }

  Turns prepare(Action action) override {
    switch (action) {
      case Action::move:
        for (const std::size_t window : {1U, 2U, 3U, 0U}) place(window, fill, {window});
        place(0, toTheLeft, {0});
        desk_.pressUntilItWorks(toTheRight, action);
        desk_.pressUntilItWorks(toTheLeft, action);
        return {toTheRight, toTheLeft};
      case Action::restore:
        for (const std::size_t window : {2U, 3U, 0U}) place(window, fill, {window});
        place(1, toTheRight, {1});
        place(0, toTheLeft, {0, 1});
        desk_.pressUntilItWorks(fill, action);
        expectShown({0});
        return {toTheLeft, fill, false};
      case Action::exchange:
        for (const std::size_t window : {2U, 3U, 0U}) place(window, fill, {window});
        place(1, toTheRight, {1});
        place(2, toTheLeft, {1, 2});
        place(0, toTheLeft, {0, 1});
        desk_.pressUntilItWorks(toTheRight, action);
        expectShown({0, 2});
        desk_.pressUntilItWorks(toTheLeft, action);
        expectShown({0, 1});
        return {toTheRight, toTheLeft};
    }
    return {};
  }

  std::vector<double> takeOwnShare() override {
    constexpr double nanosecondsInMillisecond = 1e6;
    std::vector<double> shares;
    if (!log_.is_open()) log_.open(shares_);
    log_.clear();
    for (double nanoseconds = 0; log_ >> nanoseconds;) shares.push_back(nanoseconds / nanosecondsInMillisecond);
    return shares;
  }

  std::vector<pid_t> processes() const override { return {process_->pid()}; }

 private:
  xcb_window_t window(std::size_t index) const { return desk_.windows()[index]; }

  void activate(std::size_t index) {
    desk_.display().activate(window(index));
    desk_.expect("a window is active", [&] { return desk_.display().activeWindow() == window(index); });
    desk_.waitUntilQuiet();
  }

  void expectShown(const std::vector<std::size_t>& shown) {
    std::vector<xcb_window_t> windows(shown.size());
    std::transform(shown.begin(), shown.end(), windows.begin(), [this](std::size_t index) { return window(index); });
    desk_.expectShown(windows);
  }

  /// Activates a window, as a taskbar does, presses a key in it, and waits for who is shown then.
  void place(std::size_t index, const Chord& chord, const std::vector<std::size_t>& shown) {
    activate(index);
    desk_.press(chord);
    desk_.waitUntilQuiet();
    expectShown(shown);
  }

  Desk& desk_;
  std::filesystem::path shares_ = desk_.session().home().path() / "shares";
  std::ifstream log_;
  std::optional<harness::ManagedProcess> process_;
};

}  // namespace

std::unique_ptr<Contestant> startTilora(Desk& desk, const std::filesystem::path& program, bool share) {
  return std::make_unique<Tilora>(desk, program, share);
}

}  // namespace tilora::bench
