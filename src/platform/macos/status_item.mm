// The icon in the menu bar, through NSStatusItem.
#include "platform/macos/status_item.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/ns_strings.h"

/// Receives the clicks on the icon.
@interface TiloraClickTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)clicked:(id)sender;
@end

@implementation TiloraClickTarget {
  std::function<void()> work;
}

- (instancetype)initWithAction:(std::function<void()>)action {
  self = [super init];
  if (self) work = std::move(action);
  return self;
}

- (void)clicked:(id)sender {
  (void)sender;
  work();
}

@end

namespace tilora::macos {
namespace {

Rect placeOf(NSStatusBarButton* button) {
  const NSRect place = [button.window convertRectToScreen:[button convertRect:button.bounds toView:nil]];
  return {place.origin.x, place.origin.y, place.size.width, place.size.height};
}

}  // namespace

struct StatusItem::Parts {
  NSStatusItem* item;
  /// The button does not own it.
  TiloraClickTarget* target;
};

StatusItem::StatusItem(std::function<void(const Rect&)> activated) : parts_(std::make_unique<Parts>()) {
  parts_->item = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
  NSStatusBarButton* button = parts_->item.button;
  __weak NSStatusBarButton* place = button;
  parts_->target = [[TiloraClickTarget alloc] initWithAction:[place, activated = std::move(activated)] {
    if (NSStatusBarButton* clicked = place) activated(placeOf(clicked));
  }];
  button.target = parts_->target;
  button.action = @selector(clicked:);
}

StatusItem::~StatusItem() {
  parts_->item.button.target = nil;
  [NSStatusBar.systemStatusBar removeStatusItem:parts_->item];
}

void StatusItem::setSymbol(std::string_view name, std::string_view description) {
  @autoreleasepool {
    NSString* text = nsString(description);
    NSImage* image = [NSImage imageWithSystemSymbolName:nsString(name) accessibilityDescription:text];
    [image setTemplate:YES];
    parts_->item.button.image = image;
    parts_->item.button.toolTip = text;
  }
}

}  // namespace tilora::macos
