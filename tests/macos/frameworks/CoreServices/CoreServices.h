// Apple events: what the macOS desktop uses of their public interface, declared from its documentation.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef UInt32 AEEventClass;
typedef UInt32 AEEventID;

enum {
  kCoreEventClass = 0x61657674,       // 'aevt'
  kAEOpenApplication = 0x6F617070,    // 'oapp'
  kAEReopenApplication = 0x72617070,  // 'rapp'
};
