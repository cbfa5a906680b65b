// The panel under the icon, through NSPanel.
#include "platform/macos/panel.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

/// Has no public declaration.
@interface NSWindow (TiloraActivation)
- (void)_setPreventsActivation:(BOOL)prevents;
@end

namespace tilora::macos {
namespace {

/// AppKit tells the window server of the style of a panel only when the panel is made. One that got it later would not activate the
/// program by becoming the key window, but by the first press of a button in it.
void preventActivation(NSWindow* panel) {
  if ([panel respondsToSelector:@selector(_setPreventsActivation:)]) [panel _setPreventsActivation:YES];
}

}  // namespace

void makePanel(std::uintptr_t view) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a number is what Qt names a view by
  NSWindow* window = ((__bridge NSView*)reinterpret_cast<void*>(view)).window;
  // Only a panel takes the style, and an exception crosses no event loop.
  if (![window isKindOfClass:[NSPanel class]]) return;
  window.styleMask |= NSWindowStyleMaskNonactivatingPanel;
  preventActivation(window);
  window.hidesOnDeactivate = NO;
  window.level = NSPopUpMenuWindowLevel;
  window.collectionBehavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorTransient | NSWindowCollectionBehaviorFullScreenAuxiliary;
}

Subscription watchPressesElsewhere(std::function<void()> pressed) {
  const auto watcher = std::make_shared<std::function<void()>>(std::move(pressed));
  const std::weak_ptr<std::function<void()>> ifWatching = watcher;
  id token = [NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown | NSEventMaskOtherMouseDown
                                                    handler:^(NSEvent*) {
                                                      if (const auto watching = ifWatching.lock()) (*watching)();
                                                    }];
  if (!token) return {};
  return Subscription([token, watcher] { [NSEvent removeMonitor:token]; });
}

}  // namespace tilora::macos
