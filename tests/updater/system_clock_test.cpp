// The rules of real time zones.
#include "updater/system_clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/named_case.h"

namespace tilora::updater {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

/// While it lives, the user lives in a zone, written as POSIX has it: no data base of zones is needed.
class InZone {
 public:
  explicit InZone(const std::string& zone) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    setenv("TZ", zone.c_str(), 1);
  }
  InZone(const InZone&) = delete;
  InZone& operator=(const InZone&) = delete;
  ~InZone() {
    if (before_) {
      setenv("TZ", before_->c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

 private:
  std::optional<std::string> before_;
};

struct ZoneCase {
  std::string name;
  std::string zone;
  seconds inJanuary;
  seconds inJuly;
};

class OffsetsOf : public testing::TestWithParam<ZoneCase> {};

TEST_P(OffsetsOf, AreThoseOfTheZone) {
  const InZone zone(GetParam().zone);
  SystemClock clock;
  EXPECT_EQ(clock.utcOffset(sys_days(2025y / 1 / 15)), GetParam().inJanuary);
  EXPECT_EQ(clock.utcOffset(sys_days(2025y / 7 / 15)), GetParam().inJuly);
}

INSTANTIATE_TEST_SUITE_P(Zone, OffsetsOf,
                         testing::Values(ZoneCase{"utc", "UTC0", 0s, 0s}, ZoneCase{"kathmandu", "<+0545>-5:45", 5h + 45min, 5h + 45min},
                                         ZoneCase{"berlin", "CET-1CEST,M3.5.0,M10.5.0/3", 1h, 2h},
                                         ZoneCase{"new_york", "EST5EDT,M3.2.0,M11.1.0", -5h, -4h},
                                         ZoneCase{"sydney", "AEST-10AEDT,M10.1.0,M4.1.0/3", 11h, 10h},
                                         ZoneCase{"lord_howe", "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 11h, 10h + 30min},
                                         ZoneCase{"apia", "<+13>-13", 13h, 13h}, ZoneCase{"honolulu", "HST10", -10h, -10h}),
                         test::caseName);

TEST(SystemClock, ChangesItsOffsetToTheSecond) {
  const InZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  SystemClock clock;
  const sys_seconds change = sys_days(2025y / 3 / 30) + 1h;
  EXPECT_EQ(clock.utcOffset(change - 1s), 1h);
  EXPECT_EQ(clock.utcOffset(change), 2h);
}

TEST(SystemClock, CountsCalendarDaysInTheZoneOfTheUser) {
  const InZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  SystemClock clock;
  const UtcOffset offset = [&clock](sys_seconds moment) { return clock.utcOffset(moment); };
  const sys_seconds noon = sys_days(2025y / 4 / 2) + 10h;
  EXPECT_EQ(daysBefore(noon, 5, offset), sys_days(2025y / 3 / 28) + 11h);
}

TEST(SystemClock, HasAnAnswerForMomentsThatNoCalendarReaches) {
  SystemClock clock;
  EXPECT_EQ(clock.utcOffset(sys_seconds::max()), 0s);
  EXPECT_EQ(clock.utcOffset(sys_seconds::min()), 0s);
}

TEST(SystemClock, ShowsTheTimeOfTheComputer) {
  SystemClock clock;
  const Moment before = std::chrono::system_clock::now();
  const Moment shown = clock.now();
  EXPECT_LE(before, shown);
  EXPECT_LE(shown, std::chrono::system_clock::now());
}

}  // namespace
}  // namespace tilora::updater
