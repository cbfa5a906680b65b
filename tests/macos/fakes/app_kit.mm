// An AppKit in memory, over the fake system's world.
#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

#include <algorithm>

#include "fakes/app_kit_state.h"
#include "fakes/fake_system.h"
#include "fakes/foundation_objects.h"

using namespace tilora;
using namespace tilora::macos::fake;

extern "C" void objc_msgSend();

namespace {

AppKitState& state() { return FakeSystem::current().appKit; }
Desktop world() { return FakeSystem::current().world().interfaces(); }
NSRect rectOf(const tilora::Rect& rect) { return {{rect.x, rect.y}, {rect.width, rect.height}}; }

}  // namespace

@interface FakeApplication : NSRunningApplication
@property const Application& application;
@end

namespace {

NSRunningApplication* wrapped(const Application& application) {
  if (!application) return nil;
  auto* running = [FakeApplication new];
  running.application = application;
  return running;
}

}  // namespace

@implementation NSRunningApplication

@dynamic processIdentifier, bundleIdentifier, localizedName, activationPolicy, terminated, hidden;

+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid {
  return wrapped(world().workspace.applicationWithProcessIdentifier(pid));
}

- (BOOL)hide {
  static_cast<FakeApplication*>(self).application->hide();
  return YES;
}

- (BOOL)unhide {
  static_cast<FakeApplication*>(self).application->unhide();
  return YES;
}

@end

@implementation FakeApplication {
  Application _shown;
}

- (const Application&)application {
  return _shown;
}

- (void)setApplication:(const Application&)application {
  _shown = application;
}

- (pid_t)processIdentifier {
  return _shown->processIdentifier();
}

- (NSString*)bundleIdentifier {
  return stringOf(_shown->bundleIdentifier());
}

- (NSString*)localizedName {
  return state().nameOfApplications.empty() ? stringOf(_shown->localizedName()) : stringOf(state().nameOfApplications);
}

- (NSApplicationActivationPolicy)activationPolicy {
  return static_cast<NSApplicationActivationPolicy>(_shown->activationPolicy());
}

- (BOOL)isTerminated {
  return _shown->isTerminated();
}

- (BOOL)isHidden {
  return _shown->isHidden();
}

@end

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
  static NSWorkspace* workspace = immortal([NSWorkspace new]);
  return workspace;
}

- (NSNotificationCenter*)notificationCenter {
  static NSNotificationCenter* center = immortal(centerOf(true));
  return center;
}

- (NSRunningApplication*)frontmostApplication {
  return wrapped(world().workspace.frontmostApplication());
}

- (NSArray*)runningApplications {
  std::vector<id> applications;
  for (const auto& application : world().workspace.runningApplications()) applications.push_back(wrapped(application));
  return arrayOf(std::move(applications));
}

- (BOOL)openURL:(NSURL*)url {
  world().shell.openURL(textOf(url));
  return YES;
}

@end

@interface FakeScreen : NSScreen
@property const ScreenRef& screen;
@end

namespace {

NSScreen* wrapped(const ScreenRef& screen) {
  if (!screen) return nil;
  auto* shown = [FakeScreen new];
  shown.screen = screen;
  return shown;
}

}  // namespace

@implementation NSScreen

@dynamic frame, visibleFrame, deviceDescription;

+ (NSArray*)screens {
  std::vector<id> screens;
  for (const auto& screen : world().screens.screens()) screens.push_back(wrapped(screen));
  return arrayOf(std::move(screens));
}

+ (NSScreen*)mainScreen {
  return wrapped(world().screens.mainScreen());
}

@end

@implementation FakeScreen {
  ScreenRef _shown;
}

- (const ScreenRef&)screen {
  return _shown;
}

- (void)setScreen:(const ScreenRef&)screen {
  _shown = screen;
}

- (NSRect)frame {
  return rectOf(_shown->frame);
}

- (NSRect)visibleFrame {
  return rectOf(_shown->visibleFrame);
}

- (NSDictionary*)deviceDescription {
  if (state().describesScreensOddly) return dictionaryOf(@"NSScreenNumber", @"a screen");
  return _shown->number ? dictionaryOf(@"NSScreenNumber", numberOf(*_shown->number)) : dictionaryOf(@"NSDeviceBitsPerSample", numberOf(8));
}

@end

@interface FakeEvent : NSEvent
@property NSEventModifierFlags flags;
@property unsigned short code;
@end

@interface FakeMonitor : NSObject
@property NSEventMask mask;
@property(copy) NSEvent* (^local)(NSEvent*);
@property(copy) void (^global)(NSEvent*);
- (void)listenToKeys;
- (void)stop;
@end

namespace {

/// What is installed, owned by the event system.
std::vector<FakeMonitor*> monitors;

id installed(FakeMonitor* monitor) {
  if (!state().canInstallMonitors) return nil;
  monitors.push_back(monitor);
  return monitor;
}

}  // namespace

@implementation NSEvent

+ (NSUInteger)pressedMouseButtons {
  return world().pointer.pressedButtons();
}

- (NSEventModifierFlags)modifierFlags {
  return static_cast<FakeEvent*>(self).flags;
}

- (unsigned short)keyCode {
  return static_cast<FakeEvent*>(self).code;
}

+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent*))block {
  auto* monitor = [FakeMonitor new];
  monitor.mask = mask;
  monitor.local = block;
  if (!installed(monitor)) return nil;
  if (mask & NSEventMaskKeyDown) [monitor listenToKeys];
  return monitor;
}

+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block {
  auto* monitor = [FakeMonitor new];
  monitor.mask = mask;
  monitor.global = block;
  return installed(monitor);
}

+ (void)removeMonitor:(id)eventMonitor {
  if (std::erase(monitors, eventMonitor) == 0) crash("a monitor was removed that is not installed");
  [static_cast<FakeMonitor*>(eventMonitor) stop];
}

@end

@implementation FakeEvent
@end

@implementation FakeMonitor {
  Subscription _keys;
}

- (void)listenToKeys {
  __weak FakeMonitor* reference = self;
  auto keys = world().keyMonitor.install([reference](const KeyEvent& key) {
    bool isSwallowed = false;
    inPool([&] {
      auto* event = [FakeEvent new];
      event.code = static_cast<unsigned short>(key.keyCode);
      event.flags = key.flags;
      FakeMonitor* monitor = reference;
      NSEvent* (^handler)(NSEvent*) = monitor.local;
      NSEvent* answer = handler(event);
      if (answer && answer != event) crash("a monitor answered another event");
      isSwallowed = answer == nil;
    });
    return isSwallowed;
  });
  if (keys) _keys = std::move(*keys);
}

- (void)stop {
  _keys.reset();
  self.local = nil;
  self.global = nil;
}

@end

@implementation NSResponder
@end

@interface FakeWindow : NSPanel
@property const std::shared_ptr<OwnWindow>& own;
@end

@interface NSWindow (Activation)
@property(readonly) BOOL preventsActivation;
- (void)_setPreventsActivation:(BOOL)prevents;
@end

@implementation NSApplication

+ (NSApplication*)sharedApplication {
  static NSApplication* application = immortal([NSApplication new]);
  return application;
}

- (BOOL)isActive {
  return state().isActive;
}

- (NSArray*)windows {
  std::vector<id> windows;
  for (const auto& own : world().shell.ownWindows()) {
    auto* window = [FakeWindow new];
    window.own = own;
    windows.push_back(window);
  }
  return arrayOf(std::move(windows));
}

- (void)activateIgnoringOtherApps:(BOOL)flag {
  if (!flag) crash("this program asked to become active only if no other is");
  world().shell.activateSelf();
}

- (void)activate {
  crash("a method that the oldest system does not have");
}

@end

@implementation NSWindow {
  BOOL _preventsActivation;
}

@dynamic title, canBecomeKeyWindow, miniaturized, visible;
// As in the real one, the window server is not told of a style that a window is given later.
@synthesize styleMask, collectionBehavior, level, hidesOnDeactivate;

- (instancetype)init {
  self = [super init];
  if (self) self.hidesOnDeactivate = YES;
  return self;
}

- (BOOL)preventsActivation {
  return _preventsActivation;
}

- (void)_setPreventsActivation:(BOOL)prevents {
  _preventsActivation = prevents;
}

- (BOOL)respondsToSelector:(SEL)selector {
  return [super respondsToSelector:selector] && (state().canPreventActivation || selector != @selector(_setPreventsActivation:));
}

- (void)orderFrontRegardless {
}

- (void)makeKeyAndOrderFront:(id)sender {
  (void)sender;
}

- (NSRect)convertRectToScreen:(NSRect)rect {
  const tilora::Rect place = state().iconPlace;
  return {{rect.origin.x + place.x, rect.origin.y + place.y}, rect.size};
}

@end

@implementation NSPanel
@end

@implementation FakeWindow {
  std::shared_ptr<OwnWindow> _shown;
}

- (const std::shared_ptr<OwnWindow>&)own {
  return _shown;
}

- (void)setOwn:(const std::shared_ptr<OwnWindow>&)own {
  _shown = own;
}

- (NSString*)title {
  return stringOf(_shown->title());
}

- (BOOL)canBecomeKeyWindow {
  return _shown->canBecomeKey();
}

- (BOOL)isMiniaturized {
  return _shown->isMinimized();
}

- (void)orderFrontRegardless {
  _shown->orderFrontRegardless();
}

- (void)makeKeyAndOrderFront:(id)sender {
  (void)sender;
  _shown->makeKeyAndOrderFront();
}

@end

@interface FakeView : NSView
@property(strong) NSWindow* owner;
@end

@implementation NSView

@dynamic bounds;
@synthesize toolTip;

- (NSWindow*)window {
  return nil;
}

- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
  if (view) crash("a place was converted to another view, not to the window");
  return rect;
}

@end

@implementation FakeView

- (NSWindow*)window {
  return self.owner;
}

@end

@implementation NSControl
@synthesize target, action;
@end

@implementation NSButton
@synthesize image;
@end

@interface FakeImage : NSImage
@property(strong) NSString* symbol;
@property(strong) NSString* text;
@property BOOL isTemplate;
@end

@implementation NSImage

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
  auto* image = [FakeImage new];
  image.symbol = name;
  image.text = description;
  return image;
}

- (void)setTemplate:(BOOL)isTemplate {
  static_cast<FakeImage*>(self).isTemplate = isTemplate;
}

@end

@implementation FakeImage
@end

@implementation NSStatusBarButton {
  NSWindow* _frame;
}

- (NSWindow*)window {
  if (!_frame) _frame = [NSWindow new];
  return _frame;
}

- (NSRect)bounds {
  const tilora::Rect place = state().iconPlace;
  return {{0, 0}, {place.width, place.height}};
}

@end

@interface FakeStatusItem : NSStatusItem
@property(strong) NSStatusBarButton* shown;
@end

@implementation NSStatusItem

- (NSStatusBarButton*)button {
  return static_cast<FakeStatusItem*>(self).shown;
}

@end

@implementation FakeStatusItem
@end

namespace {

/// The icons of the menu bar; whoever made one owns it, the bar does not.
std::vector<__weak FakeStatusItem*> statusItems;
std::vector<FakeView*> views;

FakeView* viewAt(std::uintptr_t address) {
  const auto found = std::find_if(views.begin(), views.end(),
                                  [&](FakeView* view) { return reinterpret_cast<std::uintptr_t>((__bridge void*)view) == address; });
  if (found == views.end()) crash("there is no such view");
  return *found;
}

}  // namespace

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
  static NSStatusBar* bar = immortal([NSStatusBar new]);
  return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
  if (length != NSSquareStatusItemLength) crash("an icon of another length");
  auto* item = [FakeStatusItem new];
  item.shown = [NSStatusBarButton new];
  statusItems.push_back(item);
  return item;
}

- (void)removeStatusItem:(NSStatusItem*)item {
  if (std::erase(statusItems, item) == 0) crash("an icon was removed that is not shown");
}

@end

@implementation SMAppService

+ (SMAppService*)mainAppService {
  static SMAppService* service = immortal([SMAppService new]);
  return service;
}

- (SMAppServiceStatus)status {
  return static_cast<SMAppServiceStatus>(world().loginItem.status());
}

- (BOOL)registerAndReturnError:(NSError**)error {
  const auto failure = world().loginItem.registerItem();
  if (failure && error) *error = errorOf(*failure);
  return !failure;
}

- (BOOL)unregisterAndReturnError:(NSError**)error {
  const auto failure = world().loginItem.unregisterItem();
  if (failure && error) *error = errorOf(*failure);
  return !failure;
}

@end

namespace tilora::macos::fake {

std::size_t installedMonitors() { return monitors.size(); }

std::vector<ShownStatusItem> shownStatusItems() {
  std::vector<ShownStatusItem> shown;
  inPool([&] {
    for (FakeStatusItem* item : statusItems) {
      auto* image = static_cast<FakeImage*>(item.button.image);
      shown.push_back({image ? textOf(image.symbol) : "", image.isTemplate != NO, image ? textOf(image.text) : "",
                       item.button.toolTip ? textOf(item.button.toolTip) : ""});
    }
  });
  return shown;
}

void clickStatusItem() {
  inPool([] {
    NSStatusBarButton* button = statusItems.front().button;
    if (id target = button.target) reinterpret_cast<void (*)(id, SEL, id)>(objc_msgSend)(target, button.action, button);
  });
}

std::uintptr_t openWindow(bool isPanel) {
  auto* view = [FakeView new];
  view.owner = isPanel ? [NSPanel new] : [NSWindow new];
  views.push_back(view);
  return reinterpret_cast<std::uintptr_t>((__bridge void*)view);
}

WindowSetup setupOf(std::uintptr_t view) {
  WindowSetup setup;
  inPool([&] {
    NSWindow* window = viewAt(view).window;
    setup = {window.styleMask, window.collectionBehavior, window.level, window.hidesOnDeactivate != NO, window.preventsActivation != NO};
  });
  return setup;
}

void closeWindows() { views.clear(); }

void pressElsewhere(std::uint64_t mask) {
  inPool([&] {
    const auto all = monitors;
    for (FakeMonitor* monitor : all) {
      if (monitor.global && (monitor.mask & mask) != 0) monitor.global([FakeEvent new]);
    }
  });
}

}  // namespace tilora::macos::fake
