// The user opens the program although it runs, which the system says with an Apple event.
#include "platform/macos/reopening.h"

#import <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>

#include <utility>

/// Receives the event.
@interface TiloraReopenTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
/// The manager of events does not own it meanwhile.
- (void)start;
- (void)stop;
- (void)reopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply;
@end

@implementation TiloraReopenTarget {
  std::function<void()> work;
}

- (instancetype)initWithAction:(std::function<void()>)action {
  self = [super init];
  if (self) work = std::move(action);
  return self;
}

- (void)start {
  [NSAppleEventManager.sharedAppleEventManager setEventHandler:self
                                                   andSelector:@selector(reopen:withReply:)
                                                 forEventClass:kCoreEventClass
                                                    andEventID:kAEReopenApplication];
}

- (void)stop {
  [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass andEventID:kAEReopenApplication];
}

- (void)reopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply {
  (void)event;
  (void)reply;
  const auto reopened = work;  // it may end the watch, and this object with it
  reopened();
}

@end

namespace tilora::macos {

Subscription watchReopening(std::function<void()> reopened) {
  TiloraReopenTarget* target = [[TiloraReopenTarget alloc] initWithAction:std::move(reopened)];
  [target start];
  return Subscription([target] { [target stop]; });
}

}  // namespace tilora::macos
