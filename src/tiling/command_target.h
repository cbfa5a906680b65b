// What a command needs to know of the focused window to remember a choice for it.
#pragma once

#include <string>

#include "platform/desktop.h"
#include "windows/discovery.h"

namespace tilora {

/// The identity under which a choice is remembered and the screen of the window; the screen is null when it is on none.
struct CommandTarget {
  std::string windowIdentity;
  ScreenRef screen;
};

/// Finds the focused window among its application's managed windows. One that is not among them goes by its title, without a screen.
CommandTarget commandTarget(const FocusedWindow& focused, const Desktop& desktop);

}  // namespace tilora
