// The pointer's buttons, through NSEvent.
#include "platform/macos/pointer.h"

#import <AppKit/AppKit.h>

namespace tilora::macos {

std::uint64_t MacPointer::pressedButtons() { return NSEvent.pressedMouseButtons; }

}  // namespace tilora::macos
