// What a run has done, for its last lines.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace tilora::chaos {

struct Counts {
  int storms = 0;
  int actions = 0;
  int windowsOpened = 0;
  int windowsActivated = 0;
  int lies = 0;
  int propertyChanges = 0;
  int shortcuts = 0;
  int drags = 0;
  int clientsFrozen = 0;
  int clientsKilled = 0;
  int monitorChanges = 0;
  int managersReplaced = 0;
  int managersKilled = 0;
  /// Window managers that ended or stood still though nobody asked them to: their own fault, and a storm like any other.
  int managersFailed = 0;
  /// Windows that nobody managed after a change of window managers: the request to map them, or they themselves, went down with the old
  /// one. Their applications map them again.
  int dropped = 0;
  /// Windows on the screen that the window manager does not list.
  int unmanaged = 0;
  int tiloraKilled = 0;
  int tiloraEnded = 0;
  int hiddenShownAtEnd = 0;
  int placementsKept = 0;
  /// The most that the program held after a storm.
  std::size_t mostKilobytes = 0;
  std::size_t mostDescriptors = 0;
  /// Windows that nobody closed and that cannot be brought back.
  int lost = 0;
  /// Everything else that must not be, each in a sentence.
  std::vector<std::string> faults = {};

  int managerChanges() const { return managersReplaced + managersKilled + managersFailed; }
  bool isGood() const { return lost == 0 && faults.empty(); }
};

inline std::ostream& operator<<(std::ostream& stream, const Counts& counts) {
  return stream << "storms: " << counts.storms << "\nactions: " << counts.actions << "\nwindows opened: " << counts.windowsOpened
                << "\nwindows brought back by activation: " << counts.windowsActivated << "\nlies told by windows: " << counts.lies
                << "\nproperty changes in floods: " << counts.propertyChanges << "\nshortcuts pressed: " << counts.shortcuts
                << "\ndrags: " << counts.drags << "\napplications frozen: " << counts.clientsFrozen
                << "\napplications killed: " << counts.clientsKilled << "\nmonitors plugged or unplugged: " << counts.monitorChanges
                << "\nwindow managers replaced: " << counts.managersReplaced << "\nwindow managers killed: " << counts.managersKilled
                << "\nwindow managers that failed by themselves: " << counts.managersFailed
                << "\nwindows dropped by window managers that went: " << counts.dropped
                << "\nwindows shown by their manager without being listed: " << counts.unmanaged
                << "\nkills of Tilora: " << counts.tiloraKilled << "\nclean ends of Tilora: " << counts.tiloraEnded
                << "\nhidden windows shown at a clean end: " << counts.hiddenShownAtEnd
                << "\nplacements found in the settings: " << counts.placementsKept << "\nmost memory: " << counts.mostKilobytes
                << " kB\nmost descriptors: " << counts.mostDescriptors << "\nfaults: " << counts.faults.size() << "\nlost: " << counts.lost
                << "\n";
}

}  // namespace tilora::chaos
