// What the system tells of running processes (proc(5)).
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tilora::bench {

/// What a process has used since it started, with all threads that it has.
struct Usage {
  /// In nanoseconds.
  double processorTime = 0;
  /// How often a thread stopped to wait, so that something had to wake it.
  long waits = 0;
};

/// All zero when the process has ended.
Usage usageOf(pid_t process);

/// A figure of the process's memory in kB: "Rss:" is all of it, "Pss:" counts pages that others use too only in part. Throws
/// std::runtime_error when the system does not tell.
long memoryOf(pid_t process, const std::string& figure);

/// What a process has started and what that has started, as far as it runs; without the process itself.
std::vector<pid_t> descendantsOf(pid_t process);

}  // namespace tilora::bench
