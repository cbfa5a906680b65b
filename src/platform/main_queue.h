// Work for later on the main thread.
#pragma once

#include <chrono>
#include <functional>

#include "platform/subscription.h"

namespace tilora {

class MainQueue {
 public:
  virtual ~MainQueue() = default;

  /// Runs `work` on the next turn of the event loop; pieces of work run in the order of posting.
  virtual void post(std::function<void()> work) = 0;
  /// Runs `work` once, `delay` from now.
  virtual void postAfter(std::chrono::milliseconds delay, std::function<void()> work) = 0;
  /// Runs `work` every `interval`, first one interval from now, also while a menu is tracked, until the subscription ends.
  virtual Subscription repeat(std::chrono::milliseconds interval, std::function<void()> work) = 0;
};

}  // namespace tilora
