// A check from its start to its end.
#include "updater/releasewatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recording_surroundings.h"

namespace tilora::updater {
namespace {

using namespace std::chrono_literals;
using std::chrono::days;
using testing::ElementsAre;

constexpr const char* site = "https://releases.invalid/tilora";
constexpr const char* checking = "print Releasewatch: checking for update at https://releases.invalid/tilora...";
constexpr const char* fetching = "fetch https://releases.invalid/tilora/updater.json";

std::string feedOf(const std::string& version, const std::string& file = "Tilora-1.4.zip") {
  return R"({"product":"Tilora","version":")" + version + R"(","file":")" + file + "\"}";
}

std::string showing(const std::string& version) {
  return "show Update Available | A new version (" + version + ") is available. Would you like to download it? | Download | Cancel";
}

class Check : public testing::Test {
 public:
  RecordingSurroundings desk;

  void start(const std::string& baseUrl = site, int backOffDays = 5, std::optional<std::string> localVersion = "1.3") {
    const auto watch = std::make_shared<Releasewatch>(baseUrl, backOffDays, desk.with(std::move(localVersion)));
    watch->checkForUpdate();
    watch_ = watch;
  }
  bool hasEnded() const { return watch_.expired(); }

 private:
  std::weak_ptr<Releasewatch> watch_;
};

TEST_F(Check, BacksOffFourDaysAfterTheLastOne) {
  desk.date = desk.time - days(4);
  start();
  EXPECT_THAT(desk.done, ElementsAre("print Releasewatch: backed off, less than 5 days."));
  EXPECT_EQ(desk.date, desk.time - days(4));
  EXPECT_TRUE(hasEnded());
}

TEST_F(Check, IsMadeFiveDaysAndASecondAfterTheLastOne) {
  desk.date = desk.time - days(5) - 1s;
  start();
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching));
}

TEST_F(Check, IsMadeWhenThereWasNone) {
  start();
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching));
}

TEST_F(Check, IsAlwaysMadeWithANegativeBackOff) {
  desk.date = desk.time;
  start(site, -1);
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching));
}

TEST_F(Check, SaysTheDaysOfItsBackOff) {
  desk.date = desk.time;
  start(site, 14);
  EXPECT_THAT(desk.done, ElementsAre("print Releasewatch: backed off, less than 14 days."));
}

TEST_F(Check, EndsSilentlyWhenTheAddressIsNone) {
  start("https://releases.invalid:port/tilora");
  EXPECT_THAT(desk.done, ElementsAre("print Releasewatch: checking for update at https://releases.invalid:port/tilora..."));
  EXPECT_TRUE(hasEnded());
}

TEST_F(Check, OfAFetchThatFailsSaysWhyAndLeavesTheDate) {
  start();
  desk.fetchFails("no such host.");
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, "print Releasewatch: no such host."));
  EXPECT_EQ(desk.date, std::nullopt);
  EXPECT_TRUE(hasEnded());
}

TEST_F(Check, OfAFeedThatIsNoneSaysWhyAndLeavesTheDate) {
  start();
  desk.bodyComes(R"({"product":"Tilora","version":"1.4"})");
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, "print Releasewatch: the feed has no \"file\"."));
  EXPECT_EQ(desk.date, std::nullopt);
  EXPECT_TRUE(hasEnded());
}

TEST_F(Check, OfTheSameVersionSaysSoAndWritesTheDate) {
  start();
  desk.time += 3s;
  desk.bodyComes(feedOf("1.3"));
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, "print Releasewatch: application 1.3 already up to date.", "date"));
  EXPECT_EQ(desk.date, desk.time);
  EXPECT_TRUE(hasEnded());
}

class OtherVersion : public Check, public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(OtherVersion, IsOffered) {
  const auto& [local, remote] = GetParam();
  start(site, 5, local);
  desk.bodyComes(feedOf(remote));
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, showing(remote)));
}

INSTANTIATE_TEST_SUITE_P(Whatever, OtherVersion,
                         testing::Values(std::pair("1.9", "1.10"), std::pair("1.3", "1.2"), std::pair("1.3", "1.3.0"),
                                         std::pair("1.3", "1.3 "), std::pair("1.3", ""), std::pair("1.3a", "1.3A")));

TEST_F(Check, OffersEveryVersionWhenTheOwnOneIsUnknown) {
  start(site, 5, std::nullopt);
  desk.bodyComes(feedOf(""));
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, showing("")));
}

TEST_F(Check, WritesTheDateWhenTheAlertIsDismissedAndNotBefore) {
  start();
  desk.bodyComes(feedOf("1.4"));
  EXPECT_EQ(desk.date, std::nullopt);
  EXPECT_FALSE(hasEnded());
  desk.time += 7200s;
  desk.alertEnds(AlertAnswer::secondButton);
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, showing("1.4"), "date"));
  EXPECT_EQ(desk.date, desk.time);
  EXPECT_TRUE(hasEnded());
}

TEST_F(Check, OpensTheDownloadAndThenWritesTheDate) {
  start();
  desk.bodyComes(feedOf("1.4"));
  desk.alertEnds(AlertAnswer::firstButton);
  EXPECT_THAT(desk.done, ElementsAre(checking, fetching, showing("1.4"), "open https://releases.invalid/tilora/Tilora-1.4.zip", "date"));
  EXPECT_TRUE(hasEnded());
}

class File : public Check, public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(File, StaysUnderTheSite) {
  const auto& [file, opened] = GetParam();
  start();
  desk.bodyComes(feedOf("1.4", file));
  desk.alertEnds(AlertAnswer::firstButton);
  EXPECT_EQ(desk.done.at(3), std::string("open https://releases.invalid/tilora/") + opened);
}

INSTANTIATE_TEST_SUITE_P(OfTheFeed, File,
                         testing::Values(std::pair("Tilora 1.4.zip", "Tilora%201.4.zip"), std::pair("a/./../b", "a/./../b"),
                                         std::pair("", ""), std::pair("https://other.invalid/x", "https://other.invalid/x"),
                                         std::pair("//other.invalid/x", "//other.invalid/x"),
                                         std::pair("@other.invalid/x", "@other.invalid/x"), std::pair("-x", "-x"),
                                         std::pair("a\\n--b", "a%0A--b"), std::pair("a\\u0000b", "a%00b"), std::pair("é", "%C3%A9"),
                                         std::pair("$(x);`y`", "$(x);%60y%60")));

TEST_F(Check, ShowsOneLineOfAVersionHoweverLongItIs) {
  start();
  desk.bodyComes(feedOf("1\\n2" + std::string(60000, 'x')));
  EXPECT_EQ(desk.done.at(2), showing("1\uFFFD2" + std::string(97, 'x') + "\u2026"));
}

TEST_F(Check, HasNotEndedWhileAnAnswerIsAwaited) {
  start();
  EXPECT_FALSE(hasEnded());
  desk.fetchDone = nullptr;
  EXPECT_TRUE(hasEnded()) << "what nobody can answer any more is released";
  EXPECT_THAT(desk.done, testing::SizeIs(2));
}

}  // namespace
}  // namespace tilora::updater
