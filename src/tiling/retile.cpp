// One pass over the desktop.
#include "tiling/retile.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "tiling/drag_guard.h"
#include "tiling/layout.h"
#include "windows/attribute_readers.h"
#include "windows/discovery.h"
#include "windows/window_scan.h"

namespace tilora {
namespace {

/// What a pass knows of the windows of one process.
struct ProcessWindows {
  ProcessId pid = 0;
  std::size_t count = 0;
  /// Whether one of them is shown.
  bool isWanted = false;
};

/// The windows of a list by process, in the order in which the processes first appear.
class WindowsByProcess {
 public:
  explicit WindowsByProcess(const std::vector<ManagedWindow>& windows) {
    for (auto first = windows.begin(); first != windows.end();) {
      const ProcessId pid = first->key.pid;
      const auto next = std::find_if(first, windows.end(), [&](const ManagedWindow& window) { return window.key.pid != pid; });
      of(pid).count += static_cast<std::size_t>(next - first);
      first = next;
    }
  }

  ProcessWindows& of(ProcessId pid) {
    // Neighbours in the list mostly belong to one process.
    if (pids_.empty() || pid != lastPid_) {
      lastPid_ = pid;
      last_ = pids_.placeOf(pid);
      if (last_ == processes_.size()) processes_.push_back({.pid = pid});
    }
    return processes_[last_];
  }
  const std::vector<ProcessWindows>& all() const { return processes_; }

 private:
  FlatKeySet<ProcessId> pids_;
  /// In the order of `pids_`.
  std::vector<ProcessWindows> processes_;
  ProcessId lastPid_ = 0;
  std::size_t last_ = 0;
};

void keepUp(PlacementMemory& memory, const WindowScan& scan) {
  memory.prunePlacements(scan.keys());
  memory.applyPlacementPreferences(scan.windows());
  memory.prunePairings(scan.keys());
  memory.dropUnplacedPairings(scan.keys());
}

/// The windows of the list that are to be shown; their applications are wanted.
std::vector<const ManagedWindow*> shownWindows(const std::vector<ManagedWindow>& windows, const WindowKeySet& visible,
                                               WindowsByProcess& byProcess) {
  std::vector<const ManagedWindow*> shown;
  for (const auto& window : windows) {
    if (!visible.contains(window.key)) continue;
    shown.push_back(&window);
    byProcess.of(window.key.pid).isWanted = true;
  }
  return shown;
}

/// Of an application with several windows only the focused one is laid out, so that its windows do not fight for one frame.
void layOut(const std::vector<const ManagedWindow*>& shown, WindowsByProcess& byProcess, const std::optional<WindowKey>& focused,
            const PlacementMemory& memory, double padding, const Desktop& desktop) {
  for (const auto* window : shown) {
    if (byProcess.of(window->key.pid).count >= 2 && window->key != focused) continue;
    applyPlacement(memory.placementOf(window->key), *window, padding, desktop);
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

  WindowScan scan(desktop, [&](std::string_view application) { return memory.hasChoicesByIdentity(application); });
  for (const auto& application : scannedApplications(desktop)) scan.add(*application);
  const auto& windows = scan.windows();
  WindowsByProcess byProcess(windows);
  keepUp(memory, scan);
  const auto visible = memory.assignVisibleWindows(windows, focusedKey);
  layOut(shownWindows(windows, visible, byProcess), byProcess, focusedKey, memory, padding, desktop);
  hideOrShowApplications(byProcess, desktop.workspace);
  for (const auto& window : windows) {
    if (byProcess.of(window.key.pid).isWanted) hideOrShow(*window.window, visible.contains(window.key));
  }
}

}  // namespace tilora
