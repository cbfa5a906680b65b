// What stands in a table.
#include "figures/tables.h"

#include <gmock/gmock.h>

namespace tilora::bench {
namespace {

using testing::ElementsAre;

Entry moved(const std::string& program, int windows, std::vector<double> values) {
  return {1, program, windows, "move last", std::move(values), {}};
}

Entry failed(const std::string& program, int windows) { return {1, program, windows, "move last", {}, "gone"}; }

TEST(TablesTest, ATableHasOneLineARow) {
  EXPECT_EQ(markdown({{"", "a", "b"}, {{"x", "1", "2"}}}), "|  | a | b |\n|---|--:|--:|\n| x | 1 | 2 |\n\n");
}

TEST(TablesTest, ACellHasTheMedianAndTheNinetyFifthPercentile) {
  const Record record{{}, {moved("dwm", 4, {3, 1, 2})}};
  EXPECT_EQ(cell(record, "dwm", 4, "move last", 2), "2.00 (3.00)");
}

TEST(TablesTest, ACellSaysWhetherNobodyTriedOrNothingCameOfIt) {
  const Record record{{}, {moved("dwm", 4, {1}), failed("dwm", 4), failed("dwm", 20)}};
  EXPECT_EQ(cell(record, "dwm", 4, "move last", 0), "1 (1)*");
  EXPECT_EQ(cell(record, "dwm", 20, "move last", 0), "failed");
  EXPECT_EQ(cell(record, "dwm", 100, "move last", 0), "-");
}

TEST(TablesTest, AProgramThatFailedEverywhereKeepsItsRow) {
  const Record record{{}, {moved("i3", 4, {1}), failed("dwm", 4), moved("i3", 20, {2})}};
  const Table table = byCrowd(record, {"dwm", "i3", "awesome"}, "move last", 1);
  EXPECT_THAT(table.head, ElementsAre("", "4 windows", "20 windows"));
  EXPECT_THAT(table.rows, ElementsAre(ElementsAre("dwm", "failed", "-"), ElementsAre("i3", "1.0 (1.0)", "2.0 (2.0)")));
}

TEST(TablesTest, TiloraIsComparedWithTheClientOnTheSameWindowManager) {
  const Record record{{}, {moved("Tilora on jwm", 4, {3}), moved("bare client on jwm", 4, {2}), moved("Tilora on kwin", 4, {1})}};
  EXPECT_EQ(toFloor(record, "jwm", 4, "move last"), 1.5);
  EXPECT_EQ(toFloor(record, "kwin", 4, "move last"), std::nullopt);
}

}  // namespace
}  // namespace tilora::bench
