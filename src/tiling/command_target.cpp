// What a command needs to know of the focused window.
#include "tiling/command_target.h"

#include <algorithm>

#include "windows/identity.h"
#include "windows/window_scan.h"

namespace tilora {

CommandTarget commandTarget(const FocusedWindow& focused, const Desktop& desktop) {
  if (const auto application = desktop.workspace.applicationWithProcessIdentifier(focused.key.pid)) {
    WindowScan scan(desktop);
    scan.add(*application);
    const auto& windows = scan.windows();
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const auto& window) { return window.key == focused.key; });
    if (found != windows.end()) return {std::string(found->windowIdentity), found->screen};
  }
  return {titleIdentity(titleIn(focused.window->value(AttributeName::title))), nullptr};
}

}  // namespace tilora
