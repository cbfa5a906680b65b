// What is drawn.
#include "figures/plots.h"

#include <gmock/gmock.h>

namespace tilora::bench {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(PlotsTest, NothingIsDrawnOfNothing) { EXPECT_THAT(plots({}), IsEmpty()); }

TEST(PlotsTest, AProgramIsALineOverTheNumbersOfWindows) {
  const Record record{
      {}, {{1, "dwm", 4, "idle", {1, 3, 2}, {}}, {1, "dwm", 500, "idle", {5}, {}}, {1, "i3", 4, "idle", {}, "it does not start"}}};
  const std::vector<Plot> drawn = plots(record);
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_EQ(drawn.front().name, "idle.svg");
  EXPECT_THAT(drawn.front().script, AllOf(HasSubstr("END\n4 2 3\n500 5 5\nEND\n"), HasSubstr("set output 'idle.svg'"), HasSubstr("\"dwm\""),
                                          Not(HasSubstr("\"i3\""))));
}

TEST(PlotsTest, MemoryIsDrawnInMegabytes) {
  const Record record{{}, {{1, "dwm", 4, "proportional", {2048}, {}}}};
  ASSERT_EQ(plots(record).size(), 1U);
  EXPECT_THAT(plots(record).front().script, HasSubstr("\n4 2 2\n"));
}

TEST(PlotsTest, AWindowManagerStandsBesideItsFloor) {
  const Record record{{}, {{1, "Tilora on openbox", 4, "move last", {1.5}, {}}, {1, "bare client on openbox", 4, "move last", {1}, {}}}};
  ASSERT_EQ(plots(record).size(), 2U);
  EXPECT_EQ(plots(record).front().name, "hosts.svg");
  EXPECT_THAT(plots(record).front().script, AllOf(HasSubstr("-0.2 1.500 1.500"), HasSubstr("0.2 1.000 1.000"), HasSubstr("\"openbox\" 0")));
}

}  // namespace
}  // namespace tilora::bench
