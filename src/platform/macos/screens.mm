// The screens of the system, through NSScreen.
#include "platform/macos/screens.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace tilora::macos {
namespace {

Rect rectOf(NSRect rect) { return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}; }

std::optional<std::uint64_t> numberOf(NSScreen* screen) {
  id number = screen.deviceDescription[@"NSScreenNumber"];
  if (![number isKindOfClass:[NSNumber class]]) return std::nullopt;
  return static_cast<NSNumber*>(number).unsignedLongLongValue;
}

Screen valuesOf(NSScreen* screen) { return {rectOf(screen.frame), rectOf(screen.visibleFrame), numberOf(screen)}; }

bool areSame(const Screen& one, const Screen& other) {
  return one.frame == other.frame && one.visibleFrame == other.visibleFrame && one.number == other.number;
}

}  // namespace

ScreenRef MacScreens::known(const Screen& screen) const {
  const auto found = std::find_if(list_.begin(), list_.end(), [&](const ScreenRef& entry) { return areSame(*entry, screen); });
  return found != list_.end() ? *found : std::make_shared<const Screen>(screen);
}

const std::vector<ScreenRef>& MacScreens::screens() {
  @autoreleasepool {
    std::vector<ScreenRef> list;
    for (NSScreen* screen in NSScreen.screens) list.push_back(known(valuesOf(screen)));
    list_ = std::move(list);
    return list_;
  }
}

ScreenRef MacScreens::mainScreen() {
  @autoreleasepool {
    NSScreen* main = NSScreen.mainScreen;
    return main ? known(valuesOf(main)) : nullptr;
  }
}

}  // namespace tilora::macos
