// One pass over the desktop.
#include "tiling/retile.h"

#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tiling/drag_guard.h"
#include "tiling/layout.h"
#include "windows/attribute_readers.h"
#include "windows/discovery.h"
#include "windows/screen_keys.h"

namespace tilora {
namespace {

/// The windows of one process in the window list.
struct ProcessWindows {
  ProcessId pid = 0;
  std::vector<const ManagedWindow*> windows;
  /// Whether one of them is shown.
  bool isWanted = false;
};

/// The windows of a list by process, in the order in which the processes first appear.
class WindowsByProcess {
 public:
  explicit WindowsByProcess(const std::vector<ManagedWindow>& windows) {
    for (const auto& window : windows) groupFor(window.key.pid).windows.push_back(&window);
  }

  void markWanted(const std::vector<ManagedWindow>& windows, const WindowKeySet& visible) {
    for (const auto& window : windows) {
      if (visible.contains(window.key)) groupFor(window.key.pid).isWanted = true;
    }
  }

  const ProcessWindows& of(ProcessId pid) { return groupFor(pid); }
  const std::vector<ProcessWindows>& all() const { return groups_; }

 private:
  ProcessWindows& groupFor(ProcessId pid) {
    if (last_ < groups_.size() && groups_[last_].pid == pid) return groups_[last_];
    const auto [entry, isNew] = indexes_.try_emplace(pid, groups_.size());
    if (isNew) groups_.push_back({pid, {}, false});
    last_ = entry->second;
    return groups_[last_];
  }

  std::vector<ProcessWindows> groups_;
  std::unordered_map<ProcessId, std::size_t> indexes_;
  std::size_t last_ = 0;
};

std::vector<ManagedWindow> allManagedWindows(const Desktop& desktop) {
  std::vector<ManagedWindow> all;
  for (const auto& application : scannedApplications(desktop)) {
    auto windows = managedWindows(*application, desktop);
    all.insert(all.end(), std::make_move_iterator(windows.begin()), std::make_move_iterator(windows.end()));
  }
  return all;
}

void keepUp(PlacementMemory& memory, const std::vector<ManagedWindow>& windows) {
  const auto live = keySet(windows);
  memory.prunePlacements(live);
  memory.applyPlacementPreferences(windows);
  memory.prunePairings(live);
  memory.dropUnplacedPairings(live);
}

/// Of an application with several windows only the focused one is laid out, so that its windows do not fight for one frame.
void layOut(const std::vector<ManagedWindow>& windows, const WindowKeySet& visible, WindowsByProcess& byProcess,
            const std::optional<WindowKey>& focused, const PlacementMemory& memory, double padding, const Desktop& desktop) {
  for (const auto& window : windows) {
    if (!visible.contains(window.key)) continue;
    if (byProcess.of(window.key.pid).windows.size() >= 2 && window.key != focused) continue;
    applyPlacement(memory.placementOf(window.key), window, padding, desktop);
  }
}

void hideOrShowApplications(const WindowsByProcess& byProcess, Workspace& workspace) {
  for (const auto& process : byProcess.all()) {
    const auto application = workspace.applicationWithProcessIdentifier(process.pid);
    if (!application) continue;
    const bool isHidden = application->isHidden();
    if (process.isWanted && isHidden) application->unhide();
    if (!process.isWanted && !isHidden) application->hide();
  }
}

/// A state that cannot be read counts as the wrong one, so that it is written.
void hideOrShow(AccessibilityElement& window, bool shown) {
  if (!window.isSettable(AttributeName::hidden).value_or(false)) return;
  const bool isHidden = readBoolean(window, AttributeName::hidden).value_or(shown);
  if (isHidden == shown) window.set(AttributeName::hidden, !shown);
}

}  // namespace

void retile(const Desktop& desktop, PlacementMemory& memory, double padding) {
  const auto focused = focusedWindow(desktop);
  if (isDraggingTiledWindow(desktop.pointer, focused, memory)) return;
  if (focused && !isEligible(*focused->window)) return;
  const auto focusedKey = focused ? std::optional(focused->key) : std::nullopt;

  const auto windows = allManagedWindows(desktop);
  WindowsByProcess byProcess(windows);
  keepUp(memory, windows);
  const auto visible = memory.assignVisibleWindows(windows, focusedKey);
  byProcess.markWanted(windows, visible);
  layOut(windows, visible, byProcess, focusedKey, memory, padding, desktop);
  hideOrShowApplications(byProcess, desktop.workspace);
  for (const auto& window : windows) {
    if (byProcess.of(window.key.pid).isWanted) hideOrShow(*window.window, visible.contains(window.key));
  }
}

}  // namespace tilora
