// Work for later, through the main dispatch queue and NSTimer.
#include "platform/macos/main_queue.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace tilora::macos {
namespace {

/// Runs `work` unless the queue is gone by then. The main loop empties its own pool only after an event, and none may come for hours.
dispatch_block_t blockOf(const std::shared_ptr<const bool>& life, std::function<void()> work) {
  const std::weak_ptr<const bool> whileAlive = life;
  return ^{
    @autoreleasepool {
      if (!whileAlive.expired()) work();
    }
  };
}

}  // namespace

void MacMainQueue::post(std::function<void()> work) { dispatch_async(dispatch_get_main_queue(), blockOf(life_, std::move(work))); }

void MacMainQueue::postAfter(std::chrono::milliseconds delay, std::function<void()> work) {
  const auto nanoseconds = std::chrono::nanoseconds(delay).count();
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), blockOf(life_, std::move(work)));
}

Subscription MacMainQueue::repeat(std::chrono::milliseconds interval, std::function<void()> work) {
  const auto repeated = std::make_shared<std::function<void()>>(std::move(work));
  const std::weak_ptr<std::function<void()>> ifSubscribed = repeated;
  const std::weak_ptr<const bool> whileAlive = life_;
  NSTimer* timer = [NSTimer timerWithTimeInterval:std::chrono::duration<double>(interval).count()
                                          repeats:YES
                                            block:^(NSTimer*) {
                                              @autoreleasepool {
                                                const auto tick = ifSubscribed.lock();
                                                if (tick && !whileAlive.expired()) (*tick)();
                                              }
                                            }];
  // In the default mode it would stand still while a menu is open or a control is held down.
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  // The system slows down the timers of a program that shows no window (App Nap), unless it says that it works for the user.
  id activity = [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                             reason:@"Watching the windows of the desktop"];
  return Subscription([timer, activity, repeated] {
    [timer invalidate];
    [NSProcessInfo.processInfo endActivity:activity];
  });
}

}  // namespace tilora::macos
