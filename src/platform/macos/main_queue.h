// Work for later on the main thread.
#pragma once

#include <memory>

#include "platform/main_queue.h"

namespace tilora::macos {

/// The main dispatch queue, and timers of the main run loop, which run at their times also while no window is shown. What is still queued
/// when this ends never runs.
class MacMainQueue final : public MainQueue {
 public:
  void post(std::function<void()> work) override;
  void postAfter(std::chrono::milliseconds delay, std::function<void()> work) override;
  Subscription repeat(std::chrono::milliseconds interval, std::function<void()> work) override;

 private:
  /// Gone when the queue is.
  std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

}  // namespace tilora::macos
