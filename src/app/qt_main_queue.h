// The main queue on Qt's event loop.
#pragma once

#include <QObject>

#include "platform/main_queue.h"

namespace tilora::app {

/// Work for later on the thread that made the queue. What is still queued when the queue ends never runs; subscriptions may end after it.
class QtMainQueue : public MainQueue {
 public:
  void post(std::function<void()> work) override;
  void postAfter(std::chrono::milliseconds delay, std::function<void()> work) override;
  Subscription repeat(std::chrono::milliseconds interval, std::function<void()> work) override;

 private:
  /// Receives the queued calls and owns the timers, so that both end with it.
  QObject context_;
};

}  // namespace tilora::app
