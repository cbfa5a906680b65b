// The panel under the icon: a window that takes the keyboard while another program stays the active one.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/subscription.h"

namespace tilora::macos {

/// Makes the window of a view such a panel: it does not activate this program, stands above other windows, on every Space and beside
/// full-screen windows, and stays when another program becomes active. `view` is an NSView. Nothing happens when its window is no panel.
void makePanel(std::uintptr_t view);

/// Calls `pressed` when a button of the pointer goes down outside this program, until the subscription ends.
Subscription watchPressesElsewhere(std::function<void()> pressed);

}  // namespace tilora::macos
