// Window managers that tile by themselves. The keys are Tilora's, as far as they can be set. While a pair is exchanged and while one comes
// back, two windows are on another virtual desktop; for a move all four are on one, and the rest of the crowd on six others.
#include <array>
#include <map>
#include <sstream>

#include "contestants.h"
#include "scene.h"

namespace tilora::bench {
namespace {

using harness::Key;

constexpr Key keyOne = static_cast<Key>(10);    // AE01
constexpr Key keyTwo = Key::two;                // AE02
constexpr Key keyThree = static_cast<Key>(12);  // AE03
/// The desktops of the windows that no key moves.
constexpr std::array otherDesktops = {static_cast<Key>(13), static_cast<Key>(14), static_cast<Key>(15),
                                      static_cast<Key>(16), static_cast<Key>(17), static_cast<Key>(18)};  // AE04 to AE09

using Commands = std::vector<std::vector<std::string>>;

struct Recipe {
  /// Writes the settings; the commands of the programs, which end in the reverse order.
  Commands (*commands)(Desk& desk);
  /// What is said to the running programs.
  void (*complete)(Desk& desk);
  Turns changePlaces;
};

std::vector<harness::ManagedProcess> started(Desk& desk, const Recipe& recipe) {
  std::vector<harness::ManagedProcess> programs;
  for (auto& command : recipe.commands(desk)) programs.push_back(desk.start(std::move(command), {{"SHELL", "/bin/sh"}}));
  return programs;
}

Chord desktop(Key number) { return {{Key::leftAlt}, number}; }

class TilingManager : public Contestant {
 public:
  TilingManager(Desk& desk, Recipe recipe) : desk_(desk), recipe_(std::move(recipe)), programs_(started(desk, recipe_)) {
    recipe_.complete(desk);
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
        openOthers();
        openPair();
        openPair();
        desk_.waitUntilQuiet();
        if (desk_.shownWindows() != 4) throw Failure("the windows of other desktops are shown");
        return tried(recipe_.changePlaces, action);
    }
    return {};
  }

  std::vector<pid_t> processes() const override {
    std::vector<pid_t> all;
    for (const auto& program : programs_) all.push_back(program.pid());
    return all;
  }

 private:
  void openOthers() {
    std::size_t missing = desk_.crowd() - 4;
    if (missing == 0) return;
    std::size_t desktops = otherDesktops.size();
    for (const Key key : otherDesktops) {
      desk_.press(desktop(key));
      desk_.waitUntilQuiet();
      const std::size_t share = missing / desktops;
      desk_.openOthers(share);
      missing -= share;
      --desktops;
    }
    desk_.press(desktop(keyOne));
    desk_.waitUntilQuiet();
  }

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
    "bindcode Mod1+12 workspace 3\n"
    "bindcode Mod1+13 workspace 4\n"
    "bindcode Mod1+14 workspace 5\n"
    "bindcode Mod1+15 workspace 6\n"
    "bindcode Mod1+16 workspace 7\n"
    "bindcode Mod1+17 workspace 8\n"
    "bindcode Mod1+18 workspace 9\n";

Commands i3Commands(Desk& desk) { return {{"i3", "-c", desk.session().home().write("config/i3/config", i3Settings).string()}}; }

constexpr const char* sxhkdSettings =
    "alt + shift + bracketleft\n  bspc node -s west\n"
    "alt + shift + bracketright\n  bspc node -s east\n"
    "alt + {1-9}\n  bspc desktop -f {I,II,III,IV,V,VI,VII,VIII,IX}\n";

Commands bspwmCommands(Desk& desk) {
  const auto& home = desk.session().home();
  const auto settings = home.write("config/bspwm/bspwmrc", "#!/bin/sh\nbspc wm --adopt-orphans\n");
  std::filesystem::permissions(settings, std::filesystem::perms::owner_all);
  const auto keys = home.write("config/sxhkd/sxhkdrc", sxhkdSettings);
  return {{"bspwm", "-c", settings.string()}, {"sxhkd", "-c", keys.string()}};
}

void completeBspwm(Desk& desk) {
  runUntilItSucceeds(desk, {"bspc", "monitor", "-d", "I", "II", "III", "IV", "V", "VI", "VII", "VIII", "IX"});
}

Commands herbstluftwmCommands(Desk& desk) {
  const auto settings = desk.session().home().write("config/herbstluftwm/autostart", "#!/bin/sh\n");
  std::filesystem::permissions(settings, std::filesystem::perms::owner_all);
  return {{"herbstluftwm", "-c", settings.string()}};
}

/// It takes over the names of the desktops that an earlier window manager left on the server.
void completeHerbstluftwm(Desk& desk) {
  const auto say = [&](const std::string& command) {
    std::vector<std::string> words = {"herbstclient"};
    std::istringstream text(command);
    for (std::string word; text >> word;) words.push_back(word);
    runUntilItSucceeds(desk, words);
  };
  for (const std::string number : {"9", "8", "7", "6", "5", "4", "3", "2", "1"}) {
    say("add " + number);
    say("use " + number);
    say("set_layout horizontal");
    say(std::string("keybind Mod1-").append(number).append(" use ").append(number));
  }
  say("keybind Mod1-Shift-bracketleft shift left");
  say("keybind Mod1-Shift-bracketright shift right");
}

/// Nine desktops and the keys, no bar and no menu.
constexpr const char* awesomeSettings = R"(
local awful = require("awful")
local gears = require("gears")
require("awful.autofocus")
awful.layout.layouts = {awful.layout.suit.tile}
awful.screen.connect_for_each_screen(function(s)
  awful.tag({"1", "2", "3", "4", "5", "6", "7", "8", "9"}, s, awful.layout.suit.tile)
end)
local keys = gears.table.join(
  awful.key({"Mod1", "Shift"}, "#34", function() awful.client.swap.byidx(-1) end),
  awful.key({"Mod1", "Shift"}, "#35", function() awful.client.swap.byidx(1) end))
for i = 1, 9 do
  keys = gears.table.join(keys, awful.key({"Mod1"}, "#" .. i + 9, function() awful.screen.focused().tags[i]:view_only() end))
end
root.keys(keys)
awful.rules.rules = {{rule = {}, properties = {focus = awful.client.focus.filter, raise = true, screen = awful.screen.preferred}}}
)";

Commands awesomeCommands(Desk& desk) {
  return {{"awesome", "-c", desk.session().home().write("config/awesome/rc.lua", awesomeSettings).string()}};
}

Commands dwmCommands(Desk& /*desk*/) { return {{"dwm"}}; }

void saysNothing(Desk& /*desk*/) {}

/// A new window is the last of its row in i3 and bspwm, so that it goes to the left first; the first one elsewhere. The keys of dwm are
/// part of the program: Alt+Return makes the second window of the stack the first.
const Recipe& recipeOf(const std::string& name) {
  static const Chord zoom = {{Key::leftAlt}, Key::enter};
  static const std::map<std::string, Recipe> all = {
      {"i3", {i3Commands, saysNothing, {toTheLeft, toTheRight}}},
      {"bspwm with sxhkd", {bspwmCommands, completeBspwm, {toTheLeft, toTheRight}}},
      {"herbstluftwm", {herbstluftwmCommands, completeHerbstluftwm, {toTheRight, toTheLeft}}},
      {"dwm", {dwmCommands, saysNothing, {zoom, zoom}}},
      {"awesome", {awesomeCommands, [](Desk& desk) { desk.watchFrames(); }, {toTheRight, toTheLeft}}}};
  return all.at(name);
}

}  // namespace

std::unique_ptr<Contestant> startTiler(Desk& desk, const std::string& name) {
  return std::make_unique<TilingManager>(desk, recipeOf(name));
}

std::vector<harness::ManagedProcess> startPrograms(Desk& desk, const std::string& name) { return started(desk, recipeOf(name)); }

}  // namespace tilora::bench
