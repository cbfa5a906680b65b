// Window managers that tile by themselves. The keys are Tilora's, as far as they can be set. While a pair is exchanged and while one comes
// back, two windows are on another virtual desktop; for a move all four are on one.
#include <sstream>

#include "contestants.h"
#include "scene.h"

namespace tilora::latency {
namespace {

using harness::Key;

constexpr Key keyOne = static_cast<Key>(10);    // AE01
constexpr Key keyTwo = Key::two;                // AE02
constexpr Key keyThree = static_cast<Key>(12);  // AE03

struct Recipe {
  /// Writes the settings and starts the programs. They end in the reverse order.
  std::vector<harness::ManagedProcess> (*start)(Desk& desk);
  Turns changePlaces;
};

Chord desktop(Key number) { return {{Key::leftAlt}, number}; }

class TilingManager : public Contestant {
 public:
  TilingManager(Desk& desk, Recipe recipe) : desk_(desk), recipe_(std::move(recipe)), programs_(recipe_.start(desk)) {
    desk_.expect("the window manager answers", [&] { return !desk_.display().windowManagerName().empty(); });
    openPair();
    desk_.pressUntilItWorks(desktop(keyTwo), Action::restore);
    openPair();
  }

  TilingManager(const TilingManager&) = delete;
  TilingManager& operator=(const TilingManager&) = delete;
  ~TilingManager() override {
    desk_.closeAll();
    while (!programs_.empty()) programs_.pop_back();
  }

  Turns prepare(Action action) override {
    switch (action) {
      case Action::exchange:
        return tried(recipe_.changePlaces, action);
      case Action::restore:
        desk_.pressUntilItWorks(desktop(keyThree), action);
        return tried({desktop(keyTwo), desktop(keyThree), false}, action);
      case Action::move:
        desk_.closeAll();
        openPair();
        openPair();
        return tried(recipe_.changePlaces, action);
    }
    return {};
  }

 private:
  void openPair() {
    desk_.open();
    desk_.open();
  }

  Turns tried(const Turns& turns, Action action) {
    desk_.pressUntilItWorks(turns.there, action);
    desk_.pressUntilItWorks(turns.back, action);
    return turns;
  }

  Desk& desk_;
  Recipe recipe_;
  std::vector<harness::ManagedProcess> programs_;
};

std::vector<harness::ManagedProcess> started(Desk& desk, std::vector<std::vector<std::string>> commands) {
  std::vector<harness::ManagedProcess> programs;
  programs.reserve(commands.size());
  for (auto& command : commands) programs.push_back(desk.session().start(std::move(command), {{"SHELL", "/bin/sh"}}));
  return programs;
}

/// Runs a program to its end, again and again until it succeeds: what it talks to is just starting.
void runUntilItSucceeds(Desk& desk, const std::vector<std::string>& command) {
  constexpr int mostTries = 200;
  for (int i = 0; i < mostTries; ++i) {
    auto process = desk.session().start(command);
    const auto end = process.waitForEnd();
    if (end && end->status == 0) return;
    desk.display().waitUntil([] { return false; }, std::chrono::milliseconds(50));
  }
  throw Failure(command.front() + " does not succeed");
}

constexpr const char* i3Settings =
    "font pango:monospace 8\n"
    "focus_follows_mouse no\n"
    "bindcode Mod1+Shift+34 move left\n"
    "bindcode Mod1+Shift+35 move right\n"
    "bindcode Mod1+10 workspace 1\n"
    "bindcode Mod1+11 workspace 2\n"
    "bindcode Mod1+12 workspace 3\n";

std::unique_ptr<Contestant> startI3(Desk& desk) {
  // A new window is the last of its row, so that it goes to the left first.
  return std::make_unique<TilingManager>(desk, Recipe{[](Desk& on) {
                                                        const auto settings = on.session().home().write("config/i3/config", i3Settings);
                                                        return started(on, {{"i3", "-c", settings.string()}});
                                                      },
                                                      {toTheLeft, toTheRight}});
}

constexpr const char* sxhkdSettings =
    "alt + shift + bracketleft\n  bspc node -s west\n"
    "alt + shift + bracketright\n  bspc node -s east\n"
    "alt + {1,2,3}\n  bspc desktop -f {I,II,III}\n";

std::unique_ptr<Contestant> startBspwm(Desk& desk) {
  return std::make_unique<TilingManager>(
      desk, Recipe{[](Desk& on) {
                     const auto& home = on.session().home();
                     const auto settings = home.write("config/bspwm/bspwmrc", "#!/bin/sh\n");
                     std::filesystem::permissions(settings, std::filesystem::perms::owner_all);
                     const auto keys = home.write("config/sxhkd/sxhkdrc", sxhkdSettings);
                     auto programs = started(on, {{"bspwm", "-c", settings.string()}, {"sxhkd", "-c", keys.string()}});
                     runUntilItSucceeds(on, {"bspc", "monitor", "-d", "I", "II", "III"});
                     return programs;
                   },
                   {toTheLeft, toTheRight}});
}

/// It takes over the names of the desktops that an earlier window manager left on the server.
std::unique_ptr<Contestant> startHerbstluftwm(Desk& desk) {
  return std::make_unique<TilingManager>(
      desk,
      Recipe{[](Desk& on) {
               const auto settings = on.session().home().write("config/herbstluftwm/autostart", "#!/bin/sh\n");
               std::filesystem::permissions(settings, std::filesystem::perms::owner_all);
               auto programs = started(on, {{"herbstluftwm", "-c", settings.string()}});
               for (const std::string command :
                    {"add 1", "add 2", "add 3", "use 3", "set_layout horizontal", "use 2", "set_layout horizontal", "use 1",
                     "set_layout horizontal", "keybind Mod1-Shift-bracketleft shift left", "keybind Mod1-Shift-bracketright shift right",
                     "keybind Mod1-1 use 1", "keybind Mod1-2 use 2", "keybind Mod1-3 use 3"}) {
                 std::vector<std::string> words = {"herbstclient"};
                 std::istringstream text(command);
                 for (std::string word; text >> word;) words.push_back(word);
                 runUntilItSucceeds(on, words);
               }
               return programs;
             },
             {toTheRight, toTheLeft}});
}

/// Its keys are part of the program: Alt+Return makes the second window of the stack the first.
std::unique_ptr<Contestant> startDwm(Desk& desk) {
  const Chord zoom = {{Key::leftAlt}, Key::enter};
  return std::make_unique<TilingManager>(desk, Recipe{[](Desk& on) { return started(on, {{"dwm"}}); }, {zoom, zoom}});
}

}  // namespace

const std::vector<Tiler>& tilers() {
  static const std::vector<Tiler> all = {
      {"i3", startI3}, {"bspwm with sxhkd", startBspwm}, {"herbstluftwm", startHerbstluftwm}, {"dwm", startDwm}};
  return all;
}

}  // namespace tilora::latency
