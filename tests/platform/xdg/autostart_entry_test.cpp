// The autostart entry: its status, what registering and unregistering do to the file, and failures in words.
#include "platform/xdg/autostart_entry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files.h"
#include "platform/xdg/desktop_entry.h"

namespace tilora::xdg {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class AutostartEntryTest : public testing::Test {
 public:
  harness::TemporaryDirectory folder;
  fs::path file = folder.path() / "config" / "autostart" / "tilora.desktop";
  AutostartEntry entry{file, "/opt/tilora/bin/tilora"};

  void put(const std::string& text) const { folder.write("config/autostart/tilora.desktop", text); }
};

TEST_F(AutostartEntryTest, WithoutAFileItIsNotRegistered) { EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered); }

TEST_F(AutostartEntryTest, RegisteringWritesAnEntryThatStartsTheProgram) {
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::enabled);
  const std::string text = contentOf(file);
  EXPECT_EQ(desktopEntryValue(text, "Type"), "Application");
  EXPECT_EQ(desktopEntryValue(text, "Name"), "Tilora");
  EXPECT_EQ(desktopEntryValue(text, "Exec"), "\"/opt/tilora/bin/tilora\"");
  EXPECT_EQ(namesIn(file.parent_path()), std::vector<std::string>{"tilora.desktop"});
}

TEST_F(AutostartEntryTest, UnregisteringRemovesTheEntryAndDoesNothingWithoutOne) {
  entry.registerItem();
  EXPECT_EQ(entry.unregisterItem(), std::nullopt);
  EXPECT_FALSE(fs::exists(file));
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(entry.unregisterItem(), std::nullopt);
}

TEST_F(AutostartEntryTest, AnEntryThatADesktopSwitchedOffIsNotRegistered) {
  for (const std::string line : {"Hidden=true", "X-GNOME-Autostart-enabled=false", "X-MATE-Autostart-enabled=false"}) {
    put("[Desktop Entry]\nExec=tilora\n" + line + "\n");
    EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered) << line;
  }
}

TEST_F(AutostartEntryTest, AnEntryThatADesktopSwitchedOnIsEnabled) {
  for (const std::string line : {"Hidden=false", "X-GNOME-Autostart-enabled=true", "X-MATE-Autostart-enabled=true", ""}) {
    put("[Desktop Entry]\nExec=tilora\n" + line + "\n");
    EXPECT_EQ(entry.status(), LoginItemStatus::enabled) << line;
  }
}

TEST_F(AutostartEntryTest, RegisteringSwitchesOnWhatADesktopSwitchedOff) {
  put("[Desktop Entry]\nExec=tilora\nHidden=true\n");
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartEntryTest, ALinkedEntryStaysALink) {
  const fs::path real = folder.write("dotfiles/tilora.desktop", "[Desktop Entry]\nHidden=true\n");
  fs::create_directories(file.parent_path());
  fs::create_symlink(real, file);
  EXPECT_EQ(entry.registerItem(), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_EQ(entry.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartEntryTest, AnEntryThatCannotBeWrittenIsAFailureInWords) {
  folder.write("config/autostart", "a file where the folder belongs");
  const auto failure = entry.registerItem();
  ASSERT_TRUE(failure);
  EXPECT_EQ(*failure, "Cannot write " + file.string() + ": Not a directory.");
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
}

TEST_F(AutostartEntryTest, AMissingPermissionIsSaidInWordsOfItsOwn) {
  // Nobody may make a file here, not even root.
  AutostartEntry forbidden("/proc/self/tilora.desktop", "/opt/tilora");
  const auto failure = forbidden.registerItem();
  ASSERT_TRUE(failure);
  EXPECT_THAT(*failure, HasSubstr("/proc/self/tilora.desktop"));
  EXPECT_THAT(*failure, Not(HasSubstr("ermitted")));
}

TEST_F(AutostartEntryTest, AFolderInThePlaceOfTheEntryIsAFailureBothWays) {
  fs::create_directories(file);
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_TRUE(entry.registerItem());
  EXPECT_TRUE(entry.unregisterItem());
}

TEST_F(AutostartEntryTest, WithoutAPlaceOrAProgramRegisteringFailsInWords) {
  EXPECT_TRUE(AutostartEntry({}, "/opt/tilora").registerItem());
  EXPECT_TRUE(AutostartEntry(file, {}).registerItem());
  EXPECT_TRUE(AutostartEntry(file, "relative/tilora").registerItem());
  EXPECT_TRUE(AutostartEntry(file, "/opt/\xff").registerItem());
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(AutostartEntryTest, TheRunningProgramIsThisTest) { EXPECT_EQ(runningProgram().filename(), "xdg_test"); }

}  // namespace
}  // namespace tilora::xdg
