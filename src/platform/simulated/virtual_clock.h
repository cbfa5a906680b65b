// A main queue whose time moves only when it is told to.
#pragma once

#include <deque>
#include <map>
#include <memory>

#include "platform/main_queue.h"

namespace tilora::simulated {

/// Posted work waits for `runPosted`; timers and delayed work run inside `advance`. The clock begins at 0. Main thread only.
class VirtualClock final : public MainQueue {
 public:
  void post(std::function<void()> work) override;
  void postAfter(std::chrono::milliseconds delay, std::function<void()> work) override;
  Subscription repeat(std::chrono::milliseconds interval, std::function<void()> work) override;

  std::chrono::milliseconds now() const { return now_; }
  /// Runs the posted work in the order of posting, also what that work posts, at the current time.
  void runPosted();
  /// Lets `duration` pass. What is due by its end, the end included, runs at its own time: by due time, and of two due at the same time
  /// the one queued first. A repeating timer queues its next tick when it has fired. Then runs what was posted meanwhile.
  void advance(std::chrono::milliseconds duration);

 private:
  void repeatOnce(std::chrono::milliseconds interval, const std::shared_ptr<std::function<void()>>& work);

  std::chrono::milliseconds now_{0};
  std::deque<std::function<void()>> posted_;
  /// By due time; a multimap keeps equal keys in the order in which they came.
  std::multimap<std::chrono::milliseconds, std::function<void()>> delayed_;
};

}  // namespace tilora::simulated
