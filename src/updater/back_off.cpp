// Calendar days are counted on the user's clocks, not in spans of 24 hours.
#include "updater/back_off.h"

namespace tilora::updater {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_seconds;

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
  const sys_seconds wholeSeconds = floor<seconds>(now);
  const Moment::duration fraction = now - wholeSeconds;
  // Compared in seconds: days far from now do not fit into a clock that counts smaller units.
  return floor<seconds>(*lastCheck - fraction) >= daysBefore(wholeSeconds, days, utcOffset);
}

}  // namespace tilora::updater
