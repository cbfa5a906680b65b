// The settings file: durable, private, and unharmed by whatever stands in its place.
#include "platform/xdg/settings_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "files.h"

namespace tilora::xdg {
namespace {

namespace fs = std::filesystem;

class SettingsFileTest : public testing::Test {
 public:
  harness::TemporaryDirectory folder;
  fs::path path = folder.path() / "config" / "tilora" / "settings.json";

  /// The value that a program started now would read; -1 when there is none.
  double stored(std::string_view key) const {
    SettingsFile settings(path);
    return settings.contains(key) ? settings.doubleValue(key) : -1;
  }
  void store(std::string_view key, double value) const { SettingsFile(path).setDouble(key, value); }
  void put(const std::string& text) const { folder.write("config/tilora/settings.json", text); }
};

TEST_F(SettingsFileTest, WithoutAFileNothingIsStoredAndNoneIsMade) {
  SettingsFile settings(path);
  EXPECT_FALSE(settings.contains("a"));
  EXPECT_FALSE(settings.boolValue("a"));
  EXPECT_EQ(settings.doubleValue("a"), 0);
  EXPECT_FALSE(settings.data("a"));
  EXPECT_FALSE(settings.date("a"));
  EXPECT_FALSE(fs::exists(path.parent_path()));
}

TEST_F(SettingsFileTest, AChangeIsReadAtOnce) {
  SettingsFile settings(path);
  settings.setDouble("a", 4);
  EXPECT_EQ(settings.doubleValue("a"), 4);
  settings.setDouble("a", 5);
  EXPECT_EQ(settings.doubleValue("a"), 5);
}

TEST_F(SettingsFileTest, EveryTypeOutlivesTheProgram) {
  const SettingDate moment = std::chrono::system_clock::now();
  {
    SettingsFile settings(path);
    settings.setBool("bool", true);
    settings.setDouble("double", 12.25);
    settings.setData("data", "\xff {}");
    settings.setDate("date", moment);
  }
  SettingsFile settings(path);
  EXPECT_TRUE(settings.boolValue("bool"));
  EXPECT_EQ(settings.doubleValue("double"), 12.25);
  EXPECT_EQ(settings.data("data"), "\xff {}");
  EXPECT_EQ(settings.date("date"), moment);
}

TEST_F(SettingsFileTest, AStoredFalseAndAStoredZeroArePresent) {
  {
    SettingsFile settings(path);
    settings.setBool("false", false);
    settings.setDouble("zero", 0);
  }
  SettingsFile settings(path);
  EXPECT_TRUE(settings.contains("false"));
  EXPECT_FALSE(settings.boolValue("false"));
  EXPECT_TRUE(settings.contains("zero"));
  EXPECT_EQ(settings.doubleValue("zero"), 0);
}

TEST_F(SettingsFileTest, AValueOfAnotherTypeReadsConvertedOrAsAbsent) {
  put(R"({"text":{"type":"text","value":" 7 px"},"yes":{"type":"bool","value":true},"bytes":{"type":"data","value":"9"}})");
  SettingsFile settings(path);
  EXPECT_EQ(settings.doubleValue("text"), 7);
  EXPECT_EQ(settings.doubleValue("yes"), 1);
  EXPECT_EQ(settings.doubleValue("bytes"), 0);
  EXPECT_FALSE(settings.data("text"));
  EXPECT_FALSE(settings.date("yes"));
}

TEST_F(SettingsFileTest, TheFileAndItsNewFolderAreTheUsersAlone) {
  store("a", 1);
  EXPECT_EQ(modeOf(path), 0600U);
  EXPECT_EQ(modeOf(path.parent_path()), 0700U);
  fs::permissions(path, fs::perms(0644));
  store("a", 2);
  EXPECT_EQ(modeOf(path), 0600U);
}

TEST_F(SettingsFileTest, OfManyChangesTheLastIsWrittenAndNothingElseIsLeftBehind) {
  {
    SettingsFile settings(path);
    for (int i = 0; i <= 2000; ++i) settings.setDouble("a", i);
  }
  EXPECT_EQ(stored("a"), 2000);
  EXPECT_EQ(namesIn(path.parent_path()), std::vector<std::string>{"settings.json"});
}

TEST_F(SettingsFileTest, KeysThatDoNotChangeAreKept) {
  store("a", 1);
  store("b", 2);
  EXPECT_EQ(stored("a"), 1);
  EXPECT_EQ(stored("b"), 2);
}

TEST_F(SettingsFileTest, ACorruptFileReadsAsNothingAndStaysUntilItIsOverwritten) {
  const std::string corrupt = R"({"a":{"type":"double")";
  put(corrupt);
  EXPECT_EQ(stored("a"), -1);
  EXPECT_EQ(contentOf(path), corrupt);
  store("a", 1);
  EXPECT_EQ(stored("a"), 1);
  EXPECT_EQ(contentOf(path.string() + ".broken"), corrupt);
}

TEST_F(SettingsFileTest, AKeptFileIsNeverOverwrittenAndTheirNumberIsBounded) {
  constexpr int times = 14;
  for (int i = 0; i < times; ++i) {
    put("broken " + std::to_string(i));
    store("a", i);
    EXPECT_EQ(stored("a"), i);
  }
  EXPECT_EQ(contentOf(path.string() + ".broken"), "broken 0");
  EXPECT_EQ(contentOf(path.string() + ".broken.9"), "broken 9");
  EXPECT_EQ(namesIn(path.parent_path()).size(), 11U);
}

TEST_F(SettingsFileTest, AFileWithEntriesThatAreNotUnderstoodIsKeptWhenItIsOverwritten) {
  const std::string newer = R"({"a":{"type":"double","value":3},"b":{"type":"list","value":"x"}})";
  put(newer);
  EXPECT_EQ(stored("a"), 3);
  store("c", 1);
  EXPECT_EQ(stored("a"), 3);
  EXPECT_EQ(contentOf(path.string() + ".broken"), newer);
}

TEST_F(SettingsFileTest, AFileBrokenWhileTheProgramRunsIsKeptToo) {
  {
    SettingsFile settings(path);
    settings.setDouble("a", 1);
  }
  {
    SettingsFile settings(path);
    put("edited by hand {");
    settings.setDouble("b", 2);
  }
  EXPECT_EQ(stored("a"), 1);
  EXPECT_EQ(contentOf(path.string() + ".broken"), "edited by hand {");
}

TEST_F(SettingsFileTest, AFileThatCouldNotBeReadAtTheStartIsKeptWhenItIsOverwritten) {
  store("earlier", 1);
  const fs::path unreadable = path.string() + ".unreadable";
  {
    // Root may read everything: what stands in the place is no file for that moment.
    fs::rename(path, unreadable);
    fs::create_directory(path);
    SettingsFile settings(path);
    fs::remove(path);
    fs::rename(unreadable, path);
    settings.setDouble("later", 2);
  }
  EXPECT_EQ(stored("later"), 2);
  EXPECT_EQ(stored("earlier"), -1);
  SettingsFile kept(path.string() + ".broken");
  EXPECT_EQ(kept.doubleValue("earlier"), 1);
}

TEST_F(SettingsFileTest, WithoutAFolderToBeHadTheValueStandsInMemory) {
  folder.write("config", "no folder");
  {
    SettingsFile settings(path);
    settings.setDouble("a", 1);
    EXPECT_EQ(settings.doubleValue("a"), 1);
  }
  EXPECT_TRUE(fs::is_regular_file(folder.path() / "config"));
}

TEST_F(SettingsFileTest, AnEnormousFileReadsAsNothing) {
  put("{}");
  fs::resize_file(path, std::uintmax_t{65} << 20U);
  EXPECT_EQ(stored("a"), -1);
  store("a", 1);
  EXPECT_EQ(stored("a"), 1);
  EXPECT_TRUE(fs::exists(path.string() + ".broken"));
}

TEST_F(SettingsFileTest, ALinkedFileStaysALinkAndWhatItLeadsToIsReplaced) {
  const fs::path real = folder.write("dotfiles/tilora.json", "{}");
  fs::create_directories(path.parent_path());
  fs::create_symlink("../../dotfiles/tilora.json", path);
  store("a", 1);
  EXPECT_EQ(fs::read_symlink(path), "../../dotfiles/tilora.json");
  EXPECT_NE(contentOf(real), "{}");
  EXPECT_EQ(stored("a"), 1);
  EXPECT_EQ(namesIn(real.parent_path()), std::vector<std::string>{"tilora.json"});
}

TEST_F(SettingsFileTest, ALinkThatLeadsNowhereYetGetsItsFile) {
  fs::create_directories(path.parent_path());
  fs::create_symlink(folder.path() / "later" / "tilora.json", path);
  EXPECT_EQ(stored("a"), -1);
  store("a", 1);
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(stored("a"), 1);
}

TEST_F(SettingsFileTest, WhatIsNoFileIsNeitherReadNorReplaced) {
  fs::create_directories(path);
  store("a", 1);
  EXPECT_TRUE(fs::is_directory(path));
  fs::remove(path);
  fs::create_symlink("/dev/null", path);
  store("a", 1);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_TRUE(fs::is_symlink(path));
  fs::remove(path);
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  store("a", 1);
  EXPECT_TRUE(fs::is_fifo(path));
  fs::remove(path);
  fs::create_symlink(path, path);
  store("a", 1);
  EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(SettingsFileTest, WithoutAPathTheValuesLiveAsLongAsTheProgram) {
  SettingsFile settings{fs::path()};
  settings.setDouble("a", 1);
  EXPECT_EQ(settings.doubleValue("a"), 1);
}

/// Files of this process may not grow beyond this many bytes while it lives: what a full disk does to a write.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limited{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handlerBefore_);
  }

 private:
  rlimit before_{};
  sighandler_t handlerBefore_ = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(SettingsFileTest, OnAFullDiskTheOldFileStaysAndTheValueStandsInMemory) {
  store("a", 1);
  {
    const FullDisk full(10);
    SettingsFile settings(path);
    settings.setDouble("a", 2);
    EXPECT_EQ(settings.doubleValue("a"), 2);
  }
  EXPECT_EQ(stored("a"), 1);
  EXPECT_EQ(namesIn(path.parent_path()), std::vector<std::string>{"settings.json"});
}

TEST_F(SettingsFileTest, ABrokenFileIsNotMovedAwayWhileNothingCanTakeItsPlace) {
  put("broken {");
  {
    const FullDisk full(10);
    store("a", 2);
  }
  EXPECT_EQ(contentOf(path), "broken {");
  EXPECT_EQ(namesIn(path.parent_path()), std::vector<std::string>{"settings.json"});
}

TEST_F(SettingsFileTest, WhatCouldNotBeWrittenIsWrittenWithTheNextChange) {
  store("a", 1);
  SettingsFile settings(path);
  FolderWatch removals(path.parent_path(), IN_DELETE);
  {
    const FullDisk full(10);
    settings.setDouble("a", 2);
    ASSERT_TRUE(removals.wait());
  }
  EXPECT_EQ(stored("a"), 1);
  settings.setDouble("b", 3);
  while (stored("b") != 3) std::this_thread::yield();
  EXPECT_EQ(stored("a"), 2);
}

TEST_F(SettingsFileTest, WhatCouldNotBeWrittenIsWrittenAtTheEnd) {
  store("a", 1);
  {
    SettingsFile settings(path);
    FolderWatch removals(path.parent_path(), IN_DELETE);
    {
      const FullDisk full(10);
      settings.setDouble("a", 2);
      ASSERT_TRUE(removals.wait());
    }
  }
  EXPECT_EQ(stored("a"), 2);
}

TEST_F(SettingsFileTest, TwoProgramsThatWriteAtTheSameTimeLeaveAWholeFile) {
  const auto writeMany = [this](double value) {
    SettingsFile settings(path);
    for (int i = 0; i < 200; ++i) settings.setData("a", std::string(20000, value > 0 ? 'x' : 'y'));
  };
  std::thread first(writeMany, 1);
  std::thread second(writeMany, 0);
  first.join();
  second.join();
  const auto decoded = decodeSettings(contentOf(path));
  EXPECT_TRUE(decoded.isWhole);
  EXPECT_EQ(namesIn(path.parent_path()), std::vector<std::string>{"settings.json"});
}

/// Changes one value as fast as it goes, for ever: "<number>:" and a tail that only fits that number.
[[noreturn]] void changeForEver(const fs::path& path, long first) {
  SettingsFile settings(path);
  for (long i = first;; ++i) settings.setData("a", std::to_string(i) + ":" + std::string(50000, static_cast<char>('a' + i % 26)));
}

TEST_F(SettingsFileTest, AKillAtAnyMomentLeavesTheOldValueOrTheNew) {
  constexpr int rounds = 100;
  long last = 0;
  fs::create_directories(path.parent_path());
  for (int round = 0; round < rounds; ++round) {
    FolderWatch writes(path.parent_path(), IN_MOVED_TO);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) changeForEver(path, last + 1);
    ASSERT_TRUE(writes.wait());
    // The kill has to hit every phase of a write, so its moment moves from round to round.
    std::this_thread::sleep_for(std::chrono::microseconds(37 * round));
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const auto decoded = decodeSettings(contentOf(path));
    ASSERT_TRUE(decoded.isWhole) << round;
    const auto& value = std::get<SettingData>(decoded.values.at("a")).bytes;
    const long number = std::stol(value);
    ASSERT_EQ(value, std::to_string(number) + ":" + std::string(50000, static_cast<char>('a' + number % 26)));
    ASSERT_GT(number, last);
    last = number;
    ASSERT_LE(namesIn(path.parent_path()).size(), 2U);
  }
  store("b", 1);
  EXPECT_EQ(namesIn(path.parent_path()), std::vector<std::string>{"settings.json"});
}

}  // namespace
}  // namespace tilora::xdg
