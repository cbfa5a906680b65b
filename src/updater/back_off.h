// How long the last check keeps the next one away, in days of the user's calendar.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace tilora::updater {

using Moment = std::chrono::system_clock::time_point;

/// How far the user's clocks are ahead of UTC at a moment; negative west of Greenwich.
using UtcOffset = std::function<std::chrono::seconds(std::chrono::sys_seconds)>;

/// The moment at which the user's clocks showed the same time `days` calendar days before `moment` (Calendar.date(byAdding: .day));
/// negative days lie ahead. A time that clocks skipped on that day is as much later as they were put forward; of one that they showed
/// twice, it is the one with the offset of `moment`.
std::chrono::sys_seconds daysBefore(std::chrono::sys_seconds moment, int days, const UtcOffset& utcOffset);

/// Whether `lastCheck` is not earlier than `days` calendar days before `now`; never without a last check.
bool isBackedOff(const std::optional<Moment>& lastCheck, Moment now, int days, const UtcOffset& utcOffset);

}  // namespace tilora::updater
