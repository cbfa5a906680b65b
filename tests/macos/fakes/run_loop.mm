// The main queue, the main run loop and the notification centres, over the clock and the events of the fake system's world.
#import <AppKit/AppKit.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <utility>

#include "fakes/app_kit_state.h"
#include "fakes/fake_system.h"
#include "fakes/foundation_objects.h"

using namespace tilora;
using namespace tilora::macos::fake;

struct dispatch_queue_s {};

extern "C" void objc_msgSend();
extern "C" void* objc_autorelease(void* object);

@interface FakeActivity : NSObject
@property NSActivityOptions options;
@end

namespace {

/// A block on the main queue, counted there.
class Queued {
 public:
  explicit Queued(dispatch_block_t block) : block_(block) { ++count; }
  Queued(const Queued& other) : block_(other.block_) { ++count; }
  Queued& operator=(const Queued&) = delete;
  ~Queued() { --count; }

  /// The loop empties its pool after events of the user alone, of which this is none.
  void operator()() const {
    if (FakeSystem::isThere()) FakeSystem::current().appKit.hasLaunched = true;
    block_();
  }

  static inline long count = 0;

 private:
  dispatch_block_t block_;
};

}  // namespace

extern "C" {

struct dispatch_queue_s _dispatch_main_q;

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) { return when + static_cast<dispatch_time_t>(delta); }

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  if (queue != &_dispatch_main_q) crash("work was dispatched off the main queue");
  FakeSystem::current().world().clock().post(Queued(block));
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block) {
  if (queue != &_dispatch_main_q) crash("work was dispatched off the main queue");
  const std::chrono::nanoseconds delay(when);
  FakeSystem::current().world().clock().postAfter(std::chrono::ceil<std::chrono::milliseconds>(delay), Queued(block));
}

NSRunLoopMode const NSDefaultRunLoopMode = @"kCFRunLoopDefaultMode";
NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";
NSNotificationName const NSWorkspaceDidLaunchApplicationNotification = @"NSWorkspaceDidLaunchApplicationNotification";
NSNotificationName const NSWorkspaceDidTerminateApplicationNotification = @"NSWorkspaceDidTerminateApplicationNotification";
NSNotificationName const NSWorkspaceDidActivateApplicationNotification = @"NSWorkspaceDidActivateApplicationNotification";
NSNotificationName const NSWorkspaceActiveSpaceDidChangeNotification = @"NSWorkspaceActiveSpaceDidChangeNotification";
NSNotificationName const NSApplicationDidChangeScreenParametersNotification = @"NSApplicationDidChangeScreenParametersNotification";

}  // extern "C"

namespace {

/// What is on while this program says that it does something for the user.
std::vector<FakeActivity*> activities;

/// Who is told when the program is opened anew; the manager does not own it.
bool isReopenHandled = false;
__weak id reopenHandler;
SEL reopenSelector;

/// The timers that have been added to the run loop, and the observers of all centres: both are owned where they are installed.
std::vector<NSTimer*> timers;
std::vector<id> observers;
/// What is still on its way to observers that were removed.
std::vector<void (^)(NSNotification*)> late;

struct Told {
  NSNotificationName name;
  WorkspaceEvent event;
  bool isByWorkspace;
};

const std::vector<Told>& toldEvents() {
  static const std::vector<Told> events = {
      {NSWorkspaceDidLaunchApplicationNotification, WorkspaceEvent::launched, true},
      {NSWorkspaceDidTerminateApplicationNotification, WorkspaceEvent::terminated, true},
      {NSWorkspaceDidActivateApplicationNotification, WorkspaceEvent::activated, true},
      {NSWorkspaceActiveSpaceDidChangeNotification, WorkspaceEvent::spaceChanged, true},
      {NSApplicationDidChangeScreenParametersNotification, WorkspaceEvent::screensChanged, false},
  };
  return events;
}

}  // namespace

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo {
  static NSProcessInfo* info = immortal([NSProcessInfo new]);
  return info;
}

- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
  if (reason.length == 0) crash("an activity without a reason");
  auto* activity = [FakeActivity new];
  activity.options = options;
  activities.push_back(activity);
  return activity;
}

- (void)endActivity:(id<NSObject>)activity {
  if (std::erase(activities, activity) == 0) crash("an activity was ended that is not on");
}

@end

@implementation FakeActivity
@end

@implementation NSAppleEventDescriptor
@end

@implementation NSAppleEventManager

+ (NSAppleEventManager*)sharedAppleEventManager {
  static NSAppleEventManager* manager = immortal([NSAppleEventManager new]);
  return manager;
}

- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID {
  if (eventClass != kCoreEventClass || eventID != kAEReopenApplication) crash("an Apple event that the fake does not know");
  // Before that, AppKit puts its own handler in the place.
  if (!FakeSystem::current().appKit.hasLaunched) return;
  isReopenHandled = true;
  reopenHandler = handler;
  reopenSelector = handleEventSelector;
}

- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID {
  if (eventClass != kCoreEventClass || eventID != kAEReopenApplication) crash("an Apple event that the fake does not know");
  isReopenHandled = false;
}

@end

@interface FakeTimer : NSTimer
@property double interval;
@property BOOL repeats;
@property(copy) void (^block)(NSTimer*);
- (void)startInMode:(NSRunLoopMode)mode;
@end

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval repeats:(BOOL)repeats block:(void (^)(NSTimer*))block {
  auto* timer = [FakeTimer new];
  timer.interval = interval;
  timer.repeats = repeats;
  timer.block = block;
  return timer;
}

+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval repeats:(BOOL)repeats block:(void (^)(NSTimer*))block {
  NSTimer* timer = [NSTimer timerWithTimeInterval:interval repeats:repeats block:block];
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSDefaultRunLoopMode];
  return timer;
}

- (void)invalidate {
  crash("a timer that was never made");
}

@end

@implementation FakeTimer {
  Subscription _ticks;
}

- (void)startInMode:(NSRunLoopMode)mode {
  const bool isCommon = mode == NSRunLoopCommonModes;
  if (!isCommon && mode != NSDefaultRunLoopMode) crash("a run loop mode that the fake does not know");
  const auto interval = std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(self.interval));
  __weak FakeTimer* reference = self;
  const auto tick = [reference, isCommon] {
    FakeTimer* timer = reference;
    if (!timer || (!isCommon && FakeSystem::current().appKit.tracksMenu)) return;
    void (^block)(NSTimer*) = timer.block;
    block(timer);  // as on the queue, no pool
    if (!timer.repeats) [timer invalidate];
  };
  _ticks = FakeSystem::current().world().clock().repeat(interval, tick);
}

- (void)invalidate {
  _ticks.reset();
  self.block = nil;
  std::erase(timers, self);
}

@end

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop {
  static NSRunLoop* loop = immortal([NSRunLoop new]);
  return loop;
}

- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
  timers.push_back(timer);
  [static_cast<FakeTimer*>(timer) startInMode:mode];
}

@end

@implementation NSOperationQueue

+ (NSOperationQueue*)mainQueue {
  static NSOperationQueue* queue = immortal([NSOperationQueue new]);
  return queue;
}

@end

@interface FakeNotification : NSNotification
@property(strong) NSString* title;
@end

@implementation NSNotification

- (NSNotificationName)name {
  return static_cast<FakeNotification*>(self).title;
}

@end

@implementation FakeNotification
@end

@interface FakeObserver : NSObject
@property(copy) void (^block)(NSNotification*);
@property(strong) NSString* name;
@property(strong) NSNotificationCenter* center;
- (void)listenTo:(WorkspaceEvent)event;
- (void)stop;
@end

@implementation FakeObserver {
  Subscription _events;
}

- (void)listenTo:(WorkspaceEvent)event {
  __weak FakeObserver* reference = self;
  _events = FakeSystem::current().world().interfaces().workspace.observe(event, [reference] {
    FakeObserver* observer = reference;
    if (!observer) return;
    inPool([&] {
      auto* notification = [FakeNotification new];
      notification.title = observer.name;
      void (^block)(NSNotification*) = observer.block;
      block(notification);
    });
  });
}

- (void)stop {
  _events.reset();
  if (FakeSystem::current().appKit.tellsRemovedObservers) late.push_back(self.block);
  self.block = nil;
}

@end

@interface FakeCenter : NSNotificationCenter
@property BOOL isOfWorkspace;
@end

@implementation NSNotificationCenter

+ (NSNotificationCenter*)defaultCenter {
  static NSNotificationCenter* center = immortal(centerOf(false));
  return center;
}

- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
  if (queue != NSOperationQueue.mainQueue) crash("an observer that is not told on the main queue");
  if (object) crash("an observer of one sender");
  auto* observer = [FakeObserver new];
  observer.block = block;
  observer.name = name;
  observer.center = self;
  for (const Told& told : toldEvents()) {
    if ([told.name isEqual:name] && told.isByWorkspace == static_cast<FakeCenter*>(self).isOfWorkspace) [observer listenTo:told.event];
  }
  observers.push_back(observer);
  return observer;
}

- (void)removeObserver:(id)observer {
  // An observer of another centre is passed over, as by the real one.
  auto* removed = static_cast<FakeObserver*>(observer);
  if (removed.center != self || std::erase(observers, observer) == 0) return;
  [removed stop];
}

@end

@implementation FakeCenter
@end

namespace tilora::macos::fake {

NSNotificationCenter* centerOf(bool isOfWorkspace) {
  auto* center = [FakeCenter new];
  center.isOfWorkspace = isOfWorkspace;
  return center;
}

void tellRemovedObservers() {
  inPool([] {
    const auto blocks = std::exchange(late, {});
    for (const auto& block : blocks) block([FakeNotification new]);
  });
}

std::vector<std::uint64_t> runningActivities() {
  std::vector<std::uint64_t> options;
  options.reserve(activities.size());
  for (FakeActivity* activity : activities) options.push_back(activity.options);
  return options;
}

void leaveAnObjectToThePool() { objc_autorelease((__bridge_retained void*)[NSObject new]); }

void reopen() {
  if (!isReopenHandled) return;
  inPool([] {
    auto* event = [NSAppleEventDescriptor new];
    id handler = reopenHandler;
    if (!handler) crash("an Apple event was sent to a handler that is gone");
    reinterpret_cast<void (*)(id, SEL, id, id)>(objc_msgSend)(handler, reopenSelector, event, event);
  });
}

bool isReopeningWatched() { return isReopenHandled; }

long queuedBlocks() { return Queued::count; }
std::size_t installedObservers() { return observers.size(); }
std::size_t runningTimers() { return timers.size(); }

}  // namespace tilora::macos::fake
