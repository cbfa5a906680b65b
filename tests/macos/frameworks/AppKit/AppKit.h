// AppKit: what the macOS desktop uses of its public interface, declared from its documentation.
#pragma once

#include <Foundation/Foundation.h>

#define APPKIT_EXTERN extern "C"

@class NSApplication, NSEvent, NSImage, NSScreen, NSWindow;

#pragma clang assume_nonnull begin

typedef enum NSApplicationActivationPolicy : NSInteger {
  NSApplicationActivationPolicyRegular = 0,
  NSApplicationActivationPolicyAccessory = 1,
  NSApplicationActivationPolicyProhibited = 2,
} NSApplicationActivationPolicy;

@interface NSRunningApplication : NSObject
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
@property(readonly) pid_t processIdentifier;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSString* localizedName;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly, getter=isHidden) BOOL hidden;
- (BOOL)hide;
- (BOOL)unhide;
@end

APPKIT_EXTERN NSNotificationName const NSWorkspaceDidLaunchApplicationNotification;
APPKIT_EXTERN NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;
APPKIT_EXTERN NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
APPKIT_EXTERN NSNotificationName const NSWorkspaceActiveSpaceDidChangeNotification;
APPKIT_EXTERN NSNotificationName const NSApplicationDidChangeScreenParametersNotification;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
@end

typedef NSString* NSDeviceDescriptionKey;

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, nullable, readonly, strong) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@property(readonly, copy) NSDictionary<NSDeviceDescriptionKey, id>* deviceDescription;
@end

typedef unsigned long long NSEventMask;
enum : NSEventMask {
  NSEventMaskLeftMouseDown = 1ULL << 1,
  NSEventMaskRightMouseDown = 1ULL << 3,
  NSEventMaskKeyDown = 1ULL << 10,
  NSEventMaskKeyUp = 1ULL << 11,
  NSEventMaskOtherMouseDown = 1ULL << 25,
};

typedef NSUInteger NSEventModifierFlags;
enum : NSEventModifierFlags {
  NSEventModifierFlagCapsLock = 1 << 16,
  NSEventModifierFlagShift = 1 << 17,
  NSEventModifierFlagControl = 1 << 18,
  NSEventModifierFlagOption = 1 << 19,
  NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject
@property(class, readonly) NSUInteger pressedMouseButtons;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

@interface NSResponder : NSObject
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, copy) NSArray<NSWindow*>* windows;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)activate API_AVAILABLE(macos(14.0));
@end

typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
  NSWindowStyleMaskBorderless = 0,
  NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};

typedef NSUInteger NSWindowCollectionBehavior;
enum : NSWindowCollectionBehavior {
  NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
  NSWindowCollectionBehaviorTransient = 1 << 3,
  NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSPopUpMenuWindowLevel = 101;

@interface NSWindow : NSResponder
@property(copy) NSString* title;
@property(readonly) BOOL canBecomeKeyWindow;
@property(readonly, getter=isMiniaturized) BOOL miniaturized;
@property(readonly, getter=isVisible) BOOL visible;
@property NSWindowStyleMask styleMask;
@property NSWindowCollectionBehavior collectionBehavior;
@property NSWindowLevel level;
@property BOOL hidesOnDeactivate;
- (void)orderFrontRegardless;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (NSRect)convertRectToScreen:(NSRect)rect;
@end

@interface NSPanel : NSWindow
@end

@interface NSView : NSResponder
@property(nullable, readonly, assign) NSWindow* window;
@property(readonly) NSRect bounds;
@property(nullable, copy) NSString* toolTip;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;
@end

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@end

@interface NSButton : NSControl
@property(nullable, strong) NSImage* image;
@end

@interface NSStatusBarButton : NSButton
@end

static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description API_AVAILABLE(macos(11.0));
- (void)setTemplate:(BOOL)isTemplate;
@end

#pragma clang assume_nonnull end
