// Calendar days across changes of the clocks.
#include "updater/back_off.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/named_case.h"

namespace tilora::updater {
namespace {

using namespace std::chrono_literals;
using std::chrono::days;
using std::chrono::hours;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

/// A zone by its changes: from each moment on, the offset beside it.
struct Zone {
  seconds first;
  std::vector<std::pair<sys_seconds, seconds>> changes;

  seconds operator()(sys_seconds moment) const {
    seconds offset = first;
    for (const auto& [from, next] : changes) {
      if (moment >= from) offset = next;
    }
    return offset;
  }
};

constexpr sys_seconds at(year_month_day date, seconds sinceMidnight = {}) { return sys_days(date) + sinceMidnight; }

/// How fine the clock is depends on the standard library.
constexpr Moment::duration leastStep(1);

const Zone utc = {0s, {}};
const Zone kathmandu = {5h + 45min, {}};
/// One hour ahead, two in summer: changes on 30 March and 26 October 2025 at 01:00 UTC.
const Zone berlin = {1h, {{at(2025y / 3 / 30, 1h), 2h}, {at(2025y / 10 / 26, 1h), 1h}}};
/// Five hours behind, four in summer: 9 March 2025 at 07:00 UTC, 2 November at 06:00 UTC.
const Zone newYork = {-5h, {{at(2025y / 3 / 9, 7h), -4h}, {at(2025y / 11 / 2, 6h), -5h}}};
/// Half an hour more in the summer of the south: 5 April 2025 at 15:00 UTC, 4 October at 15:30 UTC.
const Zone lordHowe = {11h, {{at(2025y / 4 / 5, 15h), 10h + 30min}, {at(2025y / 10 / 4, 15h + 30min), 11h}}};
/// Went over the date line: 30 December 2011 was skipped.
const Zone apia = {-10h, {{at(2011y / 12 / 30, 10h), 14h}}};

struct DaysCase {
  std::string name;
  const Zone* zone;
  /// What the clocks show, and with which offset.
  sys_seconds now;
  seconds offset;
  int days;
  sys_seconds then;
  seconds offsetThen;
};

class CalendarDays : public testing::TestWithParam<DaysCase> {};

TEST_P(CalendarDays, LeadToTheSameTimeOnTheClocks) {
  const DaysCase& row = GetParam();
  EXPECT_EQ(daysBefore(row.now - row.offset, row.days, *row.zone), row.then - row.offsetThen);
}

INSTANTIATE_TEST_SUITE_P(
    Before, CalendarDays,
    testing::Values(
        DaysCase{"none", &berlin, at(2025y / 7 / 1, 12h), 2h, 0, at(2025y / 7 / 1, 12h), 2h},
        DaysCase{"five_days", &utc, at(2025y / 7 / 10, 12h), 0s, 5, at(2025y / 7 / 5, 12h), 0s},
        DaysCase{"over_the_end_of_a_month", &kathmandu, at(2025y / 7 / 3, 1h), 5h + 45min, 5, at(2025y / 6 / 28, 1h), 5h + 45min},
        DaysCase{"over_the_end_of_a_year", &newYork, at(2025y / 1 / 2, 23h), -5h, 5, at(2024y / 12 / 28, 23h), -5h},
        DaysCase{"over_a_leap_day", &utc, at(2024y / 3 / 2, 8h), 0s, 5, at(2024y / 2 / 26, 8h), 0s},
        DaysCase{"over_the_end_of_february", &utc, at(2025y / 3 / 2, 8h), 0s, 5, at(2025y / 2 / 25, 8h), 0s},
        DaysCase{"ahead", &utc, at(2024y / 12 / 30, 8h), 0s, -5, at(2025y / 1 / 4, 8h), 0s},
        DaysCase{"from_summer_into_winter", &berlin, at(2025y / 4 / 2, 12h), 2h, 5, at(2025y / 3 / 28, 12h), 1h},
        DaysCase{"from_winter_into_summer", &berlin, at(2025y / 10 / 28, 12h), 1h, 5, at(2025y / 10 / 23, 12h), 2h},
        DaysCase{"ahead_into_summer", &berlin, at(2025y / 3 / 28, 12h), 1h, -5, at(2025y / 4 / 2, 12h), 2h},
        DaysCase{"west_from_summer_into_winter", &newYork, at(2025y / 3 / 12, 0h), -4h, 5, at(2025y / 3 / 7, 0h), -5h},
        DaysCase{"west_from_winter_into_summer", &newYork, at(2025y / 11 / 4, 23h + 59min), -5h, 5, at(2025y / 10 / 30, 23h + 59min), -4h},
        DaysCase{"half_an_hour_from_summer", &lordHowe, at(2025y / 4 / 8, 9h), 10h + 30min, 5, at(2025y / 4 / 3, 9h), 11h},
        DaysCase{"half_an_hour_from_winter", &lordHowe, at(2025y / 10 / 8, 9h), 11h, 5, at(2025y / 10 / 3, 9h), 10h + 30min},
        DaysCase{"onto_a_skipped_time", &berlin, at(2025y / 4 / 4, 2h + 30min), 2h, 5, at(2025y / 3 / 30, 3h + 30min), 2h},
        DaysCase{"ahead_onto_a_skipped_time", &berlin, at(2025y / 3 / 25, 2h + 30min), 1h, -5, at(2025y / 3 / 30, 3h + 30min), 2h},
        DaysCase{"onto_the_last_second_before_a_change", &berlin, at(2025y / 4 / 4, 2h - 1s), 2h, 5, at(2025y / 3 / 30, 2h - 1s), 1h},
        DaysCase{"onto_the_first_second_after_a_change", &berlin, at(2025y / 4 / 4, 3h), 2h, 5, at(2025y / 3 / 30, 3h), 2h},
        DaysCase{"back_onto_a_time_shown_twice", &berlin, at(2025y / 10 / 31, 2h + 30min), 1h, 5, at(2025y / 10 / 26, 2h + 30min), 1h},
        DaysCase{"ahead_onto_a_time_shown_twice", &berlin, at(2025y / 10 / 21, 2h + 30min), 2h, -5, at(2025y / 10 / 26, 2h + 30min), 2h},
        DaysCase{"over_a_skipped_day", &apia, at(2012y / 1 / 2, 7h), 14h, 5, at(2011y / 12 / 28, 7h), -10h},
        DaysCase{"onto_a_skipped_day", &apia, at(2012y / 1 / 4, 7h), 14h, 5, at(2011y / 12 / 31, 7h), 14h},
        DaysCase{"onto_the_day_before_a_skipped_one", &apia, at(2012y / 1 / 3, 7h), 14h, 5, at(2011y / 12 / 29, 7h), -10h},
        DaysCase{"ahead_onto_a_skipped_day", &apia, at(2011y / 12 / 25, 7h), -10h, -5, at(2011y / 12 / 31, 7h), 14h}),
    test::caseName);

TEST(BackOff, IsOverOnceTheLastCheckIsEarlierThanTheSameTimeFiveDaysAgo) {
  const Moment now = at(2025y / 7 / 10, 12h) + 250ms;
  const Moment fiveDaysAgo = at(2025y / 7 / 5, 12h) + 250ms;
  EXPECT_FALSE(isBackedOff(fiveDaysAgo - 1s, now, 5, utc));
  EXPECT_FALSE(isBackedOff(fiveDaysAgo - leastStep, now, 5, utc));
  EXPECT_TRUE(isBackedOff(fiveDaysAgo, now, 5, utc));
  EXPECT_TRUE(isBackedOff(fiveDaysAgo + leastStep, now, 5, utc));
  EXPECT_TRUE(isBackedOff(fiveDaysAgo + days(1), now, 5, utc));
  EXPECT_TRUE(isBackedOff(now, now, 5, utc));
}

TEST(BackOff, CountsDaysThatHave23And25Hours) {
  const Moment inSummer = at(2025y / 4 / 2, 12h) - 2h;
  EXPECT_TRUE(isBackedOff(inSummer - days(5) + 1h, inSummer, 5, berlin));
  EXPECT_FALSE(isBackedOff(inSummer - days(5) + 1h - 1s, inSummer, 5, berlin));
  const Moment inWinter = at(2025y / 10 / 28, 12h) - 1h;
  EXPECT_TRUE(isBackedOff(inWinter - days(5) - 1h, inWinter, 5, berlin));
  EXPECT_FALSE(isBackedOff(inWinter - days(5) - 1h - 1s, inWinter, 5, berlin));
}

TEST(BackOff, DoesNotHoldBeforeTheFirstCheck) {
  EXPECT_FALSE(isBackedOff(std::nullopt, at(2025y / 7 / 10), 5, utc));
  EXPECT_FALSE(isBackedOff(std::nullopt, at(2025y / 7 / 10), std::numeric_limits<int>::max(), utc));
}

TEST(BackOff, HoldsWhileTheLastCheckLiesAhead) { EXPECT_TRUE(isBackedOff(at(2031y / 1 / 1), at(2025y / 7 / 10), 5, utc)); }

TEST(BackOff, KnowsTheFirstAndTheLastMomentOfAClock) {
  const Moment now = at(2025y / 7 / 10, 12h) + 250ms;
  EXPECT_FALSE(isBackedOff(Moment::min(), now, 5, berlin));
  EXPECT_TRUE(isBackedOff(Moment::max(), now, 5, berlin));
}

TEST(BackOff, CountsFractionsOfASecondBefore1970) {
  const Moment now = at(1960y / 7 / 10, 12h) + 250ms;
  EXPECT_TRUE(isBackedOff(now - days(5), now, 5, utc));
  EXPECT_FALSE(isBackedOff(now - days(5) - leastStep, now, 5, utc));
}

TEST(BackOff, OfNoDaysEndsAtOnce) {
  const Moment now = at(2025y / 7 / 10, 12h);
  EXPECT_TRUE(isBackedOff(now, now, 0, berlin));
  EXPECT_FALSE(isBackedOff(now - leastStep, now, 0, berlin));
}

TEST(BackOff, OfNegativeDaysNeverHolds) {
  const Moment now = at(2025y / 7 / 10, 12h);
  EXPECT_FALSE(isBackedOff(now, now, -1, berlin));
  EXPECT_FALSE(isBackedOff(now + 23h, now, -1, berlin));
}

TEST(BackOff, OfMoreDaysThanAClockCanCountIsCountedAllTheSame) {
  const Moment now = at(2025y / 7 / 10, 12h);
  EXPECT_TRUE(isBackedOff(Moment::min() + days(1), now, std::numeric_limits<int>::max(), berlin));
  EXPECT_FALSE(isBackedOff(Moment::max(), now, -std::numeric_limits<int>::max(), berlin));
}

}  // namespace
}  // namespace tilora::updater
