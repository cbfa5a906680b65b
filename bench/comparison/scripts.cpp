// Scripts as people write them: one-liners that send the active window to a half of the screen, on the keys of sxhkd.
#include <map>

#include "contestants.h"
#include "scene.h"

namespace tilora::bench {
namespace {

struct Commands {
  const char* left;
  const char* right;
};

const std::map<std::string, Commands>& commands() {
  static const std::map<std::string, Commands> all = {
      {"wmctrl script",
       {"wmctrl -r :ACTIVE: -b remove,maximized_vert,maximized_horz && wmctrl -r :ACTIVE: -e 0,0,0,800,900",
        "wmctrl -r :ACTIVE: -b remove,maximized_vert,maximized_horz && wmctrl -r :ACTIVE: -e 0,800,0,800,900"}},
      {"xdotool script",
       {"xdotool getactivewindow windowsize 50% 100% windowmove 0 0", "xdotool getactivewindow windowsize 50% 100% windowmove 50% 0"}}};
  return all;
}

class Script : public Contestant {
 public:
  Script(Desk& desk, const std::string& name) : desk_(desk) {
    desk_.openCrowd();
    desk_.display().activate(desk_.windows().front());
    desk_.expect("a window is active", [&] { return desk_.display().activeWindow() == desk_.windows().front(); });
    desk_.waitUntilQuiet();
    desk_.expectFree(tiloraKeys);
    process_ = startKeyDaemon(desk_, name);
  }

  Turns prepare(Action action) override {
    if (action != Action::move) throw Failure("a script does not pair windows");
    desk_.pressUntilItWorks(toTheRight, action);
    desk_.pressUntilItWorks(toTheLeft, action);
    return {toTheRight, toTheLeft};
  }

  std::vector<pid_t> processes() const override { return {process_->pid()}; }

 private:
  Desk& desk_;
  std::optional<harness::ManagedProcess> process_;
};

}  // namespace

harness::ManagedProcess startKeyDaemon(Desk& desk, const std::string& name) {
  const Commands& chosen = commands().at(name);
  const std::string settings =
      std::string("alt + shift + bracketleft\n  ") + chosen.left + "\nalt + shift + bracketright\n  " + chosen.right + "\n";
  const auto keys = desk.session().home().write("config/sxhkd/sxhkdrc", settings);
  return desk.start({"sxhkd", "-c", keys.string()}, {{"SHELL", "/bin/sh"}});
}

std::unique_ptr<Contestant> startScript(Desk& desk, const std::string& name) { return std::make_unique<Script>(desk, name); }

}  // namespace tilora::bench
