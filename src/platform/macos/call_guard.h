// Keeps applications that hang from holding up the program.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <chrono>
#include <functional>
#include <unordered_map>

#include "platform/accessibility.h"

namespace tilora::macos {

/// How long an application may take to answer one call, in seconds: AXUIElementSetMessagingTimeout. The system's own value is about 6 s,
/// which would stop the main thread, and with it every other window, for that long at each call. An application that is only busy answers
/// within some 10 ms; 0.25 s is the interval of the passes, so that one slow answer delays one pass.
inline constexpr float messagingTimeout = 0.25F;

/// Carries out accessibility calls, and leaves an application alone for a while after one of them ran into the messaging time-out. Without
/// that, every attribute of every window of it would wait in turn; with it a hung application costs one time-out in each rest.
class CallGuard {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  /// How long an application is left alone: long beside the time-out, short beside what a user waits for a program that has come back.
  static constexpr std::chrono::milliseconds rest{4000};

  explicit CallGuard(Clock now = std::chrono::steady_clock::now) : now_(std::move(now)) {}

  /// What `call` answers; kAXErrorCannotComplete, and no call, while `pid` is left alone.
  AXError call(ProcessId pid, const std::function<AXError()>& call);

 private:
  bool isResting(ProcessId pid);

  Clock now_;
  std::unordered_map<ProcessId, std::chrono::steady_clock::time_point> restsUntil_;
};

}  // namespace tilora::macos
