// The program's own place on the desktop, through NSApplication and NSWorkspace.
#include "platform/macos/shell.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_strings.h"

namespace tilora::macos {
namespace {

class MacWindow final : public OwnWindow {
 public:
  explicit MacWindow(NSWindow* window) : window_(window) {}

  std::string title() const override { return utf8Text(window_.title).value_or(""); }
  bool canBecomeKey() const override { return window_.canBecomeKeyWindow; }
  bool isMinimized() const override { return window_.miniaturized; }
  void orderFrontRegardless() override { [window_ orderFrontRegardless]; }
  void makeKeyAndOrderFront() override { [window_ makeKeyAndOrderFront:nil]; }

 private:
  NSWindow* window_;
};

}  // namespace

void MacShell::activateSelf() { [NSApplication.sharedApplication activateIgnoringOtherApps:YES]; }

std::vector<std::shared_ptr<OwnWindow>> MacShell::ownWindows() {
  @autoreleasepool {
    std::vector<std::shared_ptr<OwnWindow>> windows;
    for (NSWindow* window in NSApplication.sharedApplication.windows) windows.push_back(std::make_shared<MacWindow>(window));
    return windows;
  }
}

void MacShell::openURL(std::string_view url) {
  @autoreleasepool {
    NSString* text = nsString(url);
    NSURL* parsed = text ? [NSURL URLWithString:text] : nil;
    if (parsed) [NSWorkspace.sharedWorkspace openURL:parsed];
  }
}

}  // namespace tilora::macos
