// The user opens the program although it runs.
#pragma once

#include <functional>

#include "platform/subscription.h"

namespace tilora::macos {

/// Calls `reopened` each time the user opens the program while it runs, in Finder for instance, until the subscription ends. To be called
/// from the main loop: what is installed before the loop runs is replaced by what the system installs itself (kAEReopenApplication).
Subscription watchReopening(std::function<void()> reopened);

}  // namespace tilora::macos
