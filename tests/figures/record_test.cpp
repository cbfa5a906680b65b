// The data, there and back.
#include "figures/record.h"

#include <gmock/gmock.h>

#include <sstream>

namespace tilora::bench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const Entry measured = {2, "bspwm with sxhkd", 500, "move first", {1.125, 20, 0.00031}, {}};
const Entry failedStart = {1, "dwm", 4, "start first", {}, "it tiles nothing"};

Record recordOf(const std::string& text) {
  std::istringstream data(text);
  return readRecord(data);
}

TEST(RecordTest, AnEntryIsReadAsItWasWritten) {
  EXPECT_EQ(entryOf(lineOf(measured)), measured);
  EXPECT_EQ(entryOf(lineOf(failedStart)), failedStart);
}

TEST(RecordTest, ALineHasTheNumbersInOneField) {
  EXPECT_EQ(lineOf(measured), "2,bspwm with sxhkd,500,move first,1.125 20 0.00031");
  EXPECT_EQ(lineOf(failedStart), "1,dwm,4,start first,failed: it tiles nothing");
}

TEST(RecordTest, AReasonOfSeveralLinesAndCommasStaysOneField) {
  Entry entry = failedStart;
  entry.failure = "gone, and\nnobody knows why\n";
  EXPECT_EQ(lineOf(entry), "1,dwm,4,start first,failed: gone; and nobody knows why");
}

TEST(RecordTest, ALineThatWasBrokenOffIsLeftOut) {
  for (const std::string line :
       {"", "2", "2,dwm,5", "2,dwm,500,move first", "x,dwm,500,move first,1", "2,dwm,many,move first,1", "2,dwm,500,move first,1.5 oops"}) {
    EXPECT_EQ(entryOf(line), std::nullopt) << line;
  }
  EXPECT_THAT(recordOf(lineOf(measured) + "\n2,dwm,5").entries, ElementsAre(measured));
}

TEST(RecordTest, FactsComeBesideTheEntries) {
  const Record record = recordOf(lineOf("system", "Debian: 12") + "\n" + lineOf(failedStart) + "\n" + lineOf("begun", "today") + "\n");
  EXPECT_THAT(record.facts, ElementsAre(Pair("system", "Debian: 12"), Pair("begun", "today")));
  EXPECT_EQ(record.fact("system"), "Debian: 12");
  EXPECT_EQ(record.fact("ended"), "");
}

TEST(RecordTest, ValuesOfAllRoundsAreOneList) {
  const Record record{{}, {{1, "dwm", 4, "idle", {1, 2}, {}}, {1, "dwm", 20, "idle", {9}, {}}, {2, "dwm", 4, "idle", {3}, {}}}};
  EXPECT_THAT(record.values("dwm", 4, "idle"), ElementsAre(1, 2, 3));
  EXPECT_THAT(record.values("i3", 4, "idle"), IsEmpty());
  EXPECT_THAT(record.crowds(), ElementsAre(4, 20));
}

TEST(RecordTest, OneFailedRoundIsRemembered) {
  const Record record{{}, {{1, "dwm", 4, "idle", {1, 2}, {}}, {2, "dwm", 4, "idle", {}, "gone"}}};
  EXPECT_EQ(record.failure("dwm", 4, "idle"), "gone");
  EXPECT_EQ(record.failure("dwm", 4, "resident"), "");
}

}  // namespace
}  // namespace tilora::bench
