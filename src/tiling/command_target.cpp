// What a command needs to know of the focused window.
#include "tiling/command_target.h"

#include <algorithm>
#include <utility>

#include "windows/identity.h"

namespace tilora {

CommandTarget commandTarget(const FocusedWindow& focused, const Desktop& desktop) {
  if (const auto application = desktop.workspace.applicationWithProcessIdentifier(focused.key.pid)) {
    auto windows = managedWindows(*application, desktop);
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const auto& window) { return window.key == focused.key; });
    if (found != windows.end()) return {std::move(found->windowIdentity), std::move(found->screen)};
  }
  return {titleIdentity(titleOf(*focused.window)), nullptr};
}

}  // namespace tilora
