// Carbon events: what the macOS desktop uses of their public interface, declared from its documentation.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef SInt32 OSStatus;
typedef UInt32 OSType;
typedef UInt32 OptionBits;
typedef unsigned long ByteCount;
typedef unsigned long ItemCount;
typedef OSType EventParamName;
typedef OSType EventParamType;

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;

#pragma pack(push, 2)
struct EventTypeSpec {
  OSType eventClass;
  UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

struct EventHotKeyID {
  OSType signature;
  UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;
#pragma pack(pop)

enum {
  noErr = 0,
  eventNotHandledErr = -9874,
  eventHotKeyExistsErr = -9878,
  eventHotKeyInvalidErr = -9879,
};

enum {
  kEventClassKeyboard = 0x6B657962,      // 'keyb'
  kEventParamDirectObject = 0x2D2D2D2D,  // '----'
  typeEventHotKeyID = 0x686B6964,        // 'hkid'
};

enum { kEventHotKeyPressed = 5, kEventHotKeyReleased = 6 };
enum { kEventHotKeyNoOptions = 0 };
enum { cmdKey = 1 << 8, shiftKey = 1 << 9, optionKey = 1 << 11, controlKey = 1 << 12 };

#pragma clang assume_nonnull begin

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef _Nullable call, EventRef _Nullable event, void* _Nullable userData);
typedef EventHandlerProcPtr EventHandlerUPP;

CF_EXPORT EventTargetRef GetEventDispatcherTarget(void);
CF_EXPORT EventTargetRef GetApplicationEventTarget(void);
CF_EXPORT OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count, const EventTypeSpec* types,
                                       void* _Nullable userData, EventHandlerRef _Nullable* _Nullable handlerRef);
CF_EXPORT OSStatus RemoveEventHandler(EventHandlerRef handlerRef);
CF_EXPORT OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType* _Nullable actualType,
                                     ByteCount size, ByteCount* _Nullable actualSize, void* _Nullable data);
CF_EXPORT OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target, OptionBits options,
                                       EventHotKeyRef _Nullable* _Nonnull hotKeyRef);
CF_EXPORT OSStatus UnregisterEventHotKey(EventHotKeyRef hotKeyRef);

#pragma clang assume_nonnull end
