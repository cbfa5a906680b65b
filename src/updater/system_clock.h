// The clock and the time zone of this computer.
#pragma once

#include "updater/surroundings.h"

namespace tilora::updater {

/// The zone is the one of the environment variable TZ or of the system, as it was when the clock was made.
class SystemClock : public Clock {
 public:
  SystemClock();

  Moment now() override { return std::chrono::system_clock::now(); }
  /// 0 for a moment in a year that does not fit into 32 bits.
  std::chrono::seconds utcOffset(std::chrono::sys_seconds moment) override;
};

}  // namespace tilora::updater
