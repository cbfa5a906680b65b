// Keeps applications that hang from holding up the program.
#include "platform/macos/call_guard.h"

namespace tilora::macos {
namespace {

/// An application that is gone fails with the same error as one that hangs, but at once.
constexpr std::chrono::duration<double> leastWait{messagingTimeout / 2};

}  // namespace

AXError CallGuard::call(ProcessId pid, const std::function<AXError()>& call) {
  if (isResting(pid)) return kAXErrorCannotComplete;
  const auto begin = now_();
  const AXError error = call();
  if (error != kAXErrorCannotComplete) return error;
  const auto end = now_();
  if (end - begin >= leastWait) restsUntil_.insert_or_assign(pid, end + rest);
  return error;
}

bool CallGuard::isResting(ProcessId pid) {
  const auto entry = restsUntil_.find(pid);
  if (entry == restsUntil_.end()) return false;
  if (now_() < entry->second) return true;
  restsUntil_.erase(entry);
  return false;
}

}  // namespace tilora::macos
