// What the fake AppKit and Foundation tell a test, and are told by it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace tilora::macos::fake {

/// What the user sees of an icon in the menu bar.
struct ShownStatusItem {
  std::string symbol;
  bool isTemplate = false;
  std::string description;
  std::string toolTip;

  bool operator==(const ShownStatusItem&) const = default;
};

/// How a window was set up.
struct WindowSetup {
  std::uint64_t styleMask = 0;
  std::uint64_t collectionBehavior = 0;
  std::int64_t level = 0;
  bool hidesOnDeactivate = true;
  /// Whether the window server leaves the active program active when the user presses a button in it.
  bool preventsActivation = false;

  bool operator==(const WindowSetup&) const = default;
};

/// What is said here holds while there is a fake system.
struct AppKitState {
  /// Whether a menu is tracked: timers of the default mode stand still.
  bool tracksMenu = false;
  /// Whether this program is the active one.
  bool isActive = false;
  bool canInstallMonitors = true;
  /// Whether windows know the method by which the window server is told that they do not activate the program.
  bool canPreventActivation = true;
  /// Whether the main loop runs, so that the system has installed its own handlers of Apple events. Work on the main queue says so itself.
  bool hasLaunched = false;
  /// Whether something is on its way to each observer that is removed.
  bool tellsRemovedObservers = false;
  /// The place of every icon in the menu bar.
  Rect iconPlace = {1200, 876, 30, 24};
  /// Device descriptions carry a text in place of the screen's number.
  bool describesScreensOddly = false;
  /// A title that is not UTF-16, in place of every application's name.
  std::u16string nameOfApplications;
};

/// Objects that are neither gone nor the system's own, and what of them is still installed.
long liveObjectiveCObjects();
std::size_t installedObservers();
std::size_t runningTimers();
std::size_t installedMonitors();
/// The options of every activity that keeps the system from slowing this program down.
std::vector<std::uint64_t> runningActivities();
/// Leaves an object to the pool of whoever calls this, as functions of the system do.
void leaveAnObjectToThePool();
/// Tells the observers that were removed while something was on its way to them, once.
void tellRemovedObservers();
/// Blocks that the main queue holds.
long queuedBlocks();

std::vector<ShownStatusItem> shownStatusItems();
void clickStatusItem();

/// The view of a new window, as an address; the window stays until the next call of `closeWindows`.
std::uintptr_t openWindow(bool isPanel);
WindowSetup setupOf(std::uintptr_t view);
void closeWindows();

/// The user opens the program, which runs; nothing happens where nobody watches.
void reopen();
bool isReopeningWatched();

/// The user presses a button outside this program. `mask` is the bit of the event.
void pressElsewhere(std::uint64_t mask);

/// Does something between two turns of the main loop: what is autoreleased in it is let go of at its end.
void inPool(const std::function<void()>& work);

/// One turn of the main loop, for as long as it lives.
class Pool {
 public:
  Pool();
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;
  ~Pool();

 private:
  void* mark_;
};

}  // namespace tilora::macos::fake
