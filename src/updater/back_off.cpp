// Calendar days are counted on the user's clocks, not in spans of 24 hours.
#include "updater/back_off.h"

namespace tilora::updater {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_seconds;

namespace {

/// How long after a whole second `moment` is.
Moment::duration fractionOf(Moment moment) {
  const Moment::duration rest = moment.time_since_epoch() % seconds(1);
  return rest < Moment::duration::zero() ? rest + seconds(1) : rest;
}

}  // namespace

sys_seconds daysBefore(sys_seconds moment, int days, const UtcOffset& utcOffset) {
  const seconds offsetNow = utcOffset(moment);
  const sys_seconds clocks = moment + offsetNow - std::chrono::days(days);
  // No zone changes its offset twice within two days, so that these are the offsets on the two sides of any change nearby.
  const sys_seconds roughly = clocks - offsetNow;
  const seconds offsetBefore = utcOffset(roughly - std::chrono::days(1));
  const seconds offsetAfter = utcOffset(roughly + std::chrono::days(1));
  for (const seconds offset : {offsetNow, offsetBefore, offsetAfter}) {
    if (utcOffset(clocks - offset) == offset) return clocks - offset;
  }
  return clocks - offsetBefore;
}

bool isBackedOff(const std::optional<Moment>& lastCheck, Moment now, int days, const UtcOffset& utcOffset) {
  if (!lastCheck) return false;
  // Compared in seconds first: days far from now do not fit into a clock that counts smaller units.
  const sys_seconds threshold = daysBefore(floor<seconds>(now), days, utcOffset);
  const sys_seconds last = floor<seconds>(*lastCheck);
  if (last != threshold) return last > threshold;
  return fractionOf(*lastCheck) >= fractionOf(now);
}

}  // namespace tilora::updater
