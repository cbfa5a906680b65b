// Where addresses of the system's settings lead.
#include "app/qt_shell.h"

#include <gtest/gtest.h>

#include "app/login_items_page.h"

namespace tilora::app {
namespace {

TEST(Shell, TheAddressesOfTheSystemsSettingsOpenTheirPages) {
  std::string opened;
  QtShell shell({.accessibility = [&] { opened += 'a'; }, .loginItems = [&] { opened += 'l'; }}, [](QWindow&) {});
  shell.openURL("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
  shell.openURL("x-apple.systempreferences:com.apple.LoginItems-Settings.extension");
  shell.openURL("not an address");
  EXPECT_EQ(opened, "al");
}

TEST(LoginItemsPage, IsTheDesktopsOwn) {
  const auto first = [](const char* desktop) {
    const auto commands = loginItemsCommands(QString::fromLatin1(desktop));
    return commands.empty() ? std::string() : commands.front().join(QLatin1Char(' ')).toStdString();
  };
  EXPECT_EQ(first("KDE"), "systemsettings kcm_autostart");
  EXPECT_EQ(first("XFCE"), "xfce4-session-settings");
  EXPECT_EQ(first("MATE"), "mate-session-properties");
  EXPECT_EQ(first("LXQt"), "lxqt-config-session");
  EXPECT_EQ(first("X-Cinnamon"), "cinnamon-settings startup");
  EXPECT_EQ(first("ubuntu:GNOME"), "gnome-session-properties");
  EXPECT_EQ(first("openbox"), "");
  EXPECT_EQ(first(""), "");
}

}  // namespace
}  // namespace tilora::app
