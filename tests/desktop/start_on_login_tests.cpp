// Start at login: the switch in the settings of the real program, the entry it writes, and the desktops' own pages for it.
#include <filesystem>
#include <sstream>

#include "interface_test.h"

namespace tilora::harness {
namespace {

class StartOnLoginTest : public InterfaceTest {
 protected:
  std::filesystem::path entry() { return session.home().path() / "config/autostart/tilora.desktop"; }
  static std::string content(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }
  /// The program that a session manager starts; empty without an entry.
  std::string programOfEntry() {
    std::istringstream lines(content(entry()));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t begin = line.find('"') + 1;
      if (line.starts_with("Exec=\"")) return line.substr(begin, line.find('"', begin) - begin);
    }
    return {};
  }
  std::string program() { return std::filesystem::read_symlink("/proc/" + std::to_string(tilora->pid()) + "/exe").string(); }

  /// Puts a program into the session that notes its name and arguments.
  void install(const std::string& name) {
    const std::filesystem::path path =
        session.home().write("bin/" + name, "#!/bin/sh\necho \"$(basename \"$0\") $*\" >> \"$HOME/called\"\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }
  std::string called() { return content(session.home().path() / "called"); }
  /// Finds the installed programs, and no others.
  Environment desktopNamed(const std::string& name) {
    return {{"XDG_CURRENT_DESKTOP", name}, {"PATH", (session.home().path() / "bin").string() + ":/bin"}};
  }
};

TEST_P(StartOnLoginTest, TheSwitchWritesAnEntryThatStartsTheProgramAndTakesItAway) {
  startTilora();
  ASSERT_TRUE(askToShow());
  EXPECT_FALSE(isBlue(loginSwitch));
  click(loginSwitch);
  ASSERT_TRUE(waitsFor([&] { return programOfEntry() == program(); }, "the entry starts the program"));
  EXPECT_TRUE(waitsFor([&] { return isBlue({loginSwitch.x - 12, loginSwitch.y}); }, "the switch is on"));
  EXPECT_TRUE(comesToBeStored("Tilora.StartOnLogin", [](const nlohmann::json& value) { return value == true; }));
  click(loginSwitch);
  EXPECT_TRUE(waitsFor([&] { return !std::filesystem::exists(entry()); }, "the entry is gone"));
  EXPECT_TRUE(waitsFor([&] { return !isBlue({loginSwitch.x - 12, loginSwitch.y}); }, "the switch is off"));
}

TEST_P(StartOnLoginTest, WhatTheDesktopSwitchedOffIsOffWhateverWasChosenAndCanBeSwitchedOn) {
  session.home().write("config/tilora/settings.json", R"({"lastUpdateCheck": {"type": "date", "value": 4102444800000000000},
    "Tilora.StartOnLogin": {"type": "bool", "value": true}})");
  session.home().write("config/autostart/tilora.desktop", "[Desktop Entry]\nType=Application\nName=Tilora\nExec=tilora\nHidden=true\n");
  startTilora();
  ASSERT_TRUE(askToShow());
  EXPECT_FALSE(isBlue({loginSwitch.x - 12, loginSwitch.y}));
  click(loginSwitch);
  EXPECT_TRUE(waitsFor([&] { return programOfEntry() == program() && content(entry()).find("Hidden=true") == std::string::npos; },
                       "the entry is switched on"));
}

TEST_P(StartOnLoginTest, ARefusalTurnsTheSwitchBackAndIsSaid) {
  std::filesystem::create_directories(entry() / "in the way");
  startTilora();
  ASSERT_TRUE(askToShow());
  EXPECT_FALSE(isOrange(loginError));
  click(loginSwitch);
  EXPECT_TRUE(waitsFor([&] { return isOrange(loginError); }, "the line that says why"));
  EXPECT_FALSE(isBlue({loginSwitch.x - 12, loginSwitch.y}));
}

TEST_P(StartOnLoginTest, TheLinkOpensThePageOfTheDesktop) {
  struct Page {
    const char *desktop, *program, *call;
  };
  const std::array pages = {Page{"KDE", "systemsettings", "systemsettings kcm_autostart\n"},
                            Page{"XFCE", "xfce4-session-settings", "xfce4-session-settings \n"},
                            Page{"MATE", "mate-session-properties", "mate-session-properties \n"},
                            Page{"LXQt", "lxqt-config-session", "lxqt-config-session \n"},
                            Page{"X-Cinnamon", "cinnamon-settings", "cinnamon-settings startup\n"},
                            Page{"ubuntu:GNOME", "gnome-session-properties", "gnome-session-properties \n"}};
  for (const Page& page : pages) install(page.program);
  install("xdg-open");
  for (const Page& page : pages) {
    startTilora(desktopNamed(page.desktop));
    ASSERT_TRUE(askToShow());
    std::filesystem::remove(session.home().path() / "called");
    click(loginItemsLink);
    EXPECT_TRUE(waitsFor([&] { return called() == page.call; }, page.call)) << page.desktop << ": " << called();
    tilora->terminate();
  }
}

TEST_P(StartOnLoginTest, OnOtherDesktopsTheLinkOpensTheFolder) {
  install("xdg-open");
  startTilora(desktopNamed("GNOME"));
  ASSERT_TRUE(askToShow());
  click(loginItemsLink);
  const std::string folder = "xdg-open file://" + entry().parent_path().string() + "\n";
  EXPECT_TRUE(waitsFor([&] { return called() == folder; }, folder)) << called();
  EXPECT_TRUE(std::filesystem::is_directory(entry().parent_path()));
}

INSTANTIATE_TEST_SUITE_P(On, StartOnLoginTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
