// The C library knows the rules of the zone.
#include "updater/system_clock.h"

#include <ctime>

namespace tilora::updater {

SystemClock::SystemClock() { tzset(); }

std::chrono::seconds SystemClock::utcOffset(std::chrono::sys_seconds moment) {
  const std::time_t time = moment.time_since_epoch().count();
  std::tm clocks = {};
  if (localtime_r(&time, &clocks) == nullptr) return std::chrono::seconds(0);
  return std::chrono::seconds(clocks.tm_gmtoff);
}

}  // namespace tilora::updater
