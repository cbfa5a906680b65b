// Touches every part of the macOS desktop, so that a program made of all of it is linked.
#import <AppKit/AppKit.h>

#include "platform/macos/mac_desktop.h"
#include "platform/macos/panel.h"
#include "platform/macos/reopening.h"
#include "platform/macos/status_item.h"

int main() {
  @autoreleasepool {
    tilora::macos::MacDesktop desktop(1);
    const tilora::Desktop parts = desktop.interfaces();
    tilora::macos::StatusItem item([](const tilora::Rect&) {});
    item.setSymbol("rectangle.stack.fill", "Tilora");
    tilora::macos::makePanel(0);
    const auto watch = tilora::macos::watchPressesElsewhere([] {});
    const auto reopening = tilora::macos::watchReopening([] {});
    return parts.trust.isProcessTrusted() ? 0 : 1;
  }
}
