// What a run has done, for its last lines.
#pragma once

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace tilora::chaos {

struct Counts {
  int storms = 0;
  /// By the name of the window manager that they began on.
  std::map<std::string, int> stormsByManager = {};
  int actions = 0;
  int windowsOpened = 0;
  /// Times that a window was asked for as from a taskbar, and came.
  int windowsActivated = 0;
  /// By what windows lied about.
  std::map<std::string, int> lies = {};
  int propertyChanges = 0;
  /// Titles set one after the other, each of which Tilora could take notice of.
  int titles = 0;
  int shortcuts = 0;
  int drags = 0;
  int clientsFrozen = 0;
  int clientsKilled = 0;
  /// Applications that were ended, not by the driver.
  int clientsEnded = 0;
  int monitorChanges = 0;
  int managersReplaced = 0;
  int managersKilled = 0;
  /// Window managers that ended or stood still though nobody asked them to: their own fault, and a storm like any other.
  int managersFailed = 0;
  /// X servers that did so.
  int serversFailed = 0;
  /// Times that an application mapped a window again that nobody managed after a change of window managers: the request to map it, or the
  /// window itself, went down with the old one.
  int dropped = 0;
  /// Windows on the screen that the window manager does not list.
  int unmanaged = 0;
  /// Windows that their manager lists or ought to list, and does not bring back whether Tilora runs or not, until it is started anew.
  int forgotten = 0;
  int tiloraKilled = 0;
  int tiloraEnded = 0;
  /// Windows that were hidden when Tilora was asked to end. One that still is afterwards is a fault.
  int hiddenShownAtEnd = 0;
  /// Of these, the ones that one Tilora had hidden, was killed, and the next one showed.
  int hiddenTakenOver = 0;
  /// What the X server has sent to Tilora's own connection, by kind.
  std::map<std::string, int> xErrors = {};
  /// Times that the server did not tell what it had sent.
  int xErrorsUntold = 0;
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

/// "openbox 4, jwm 3"; "none" of nothing.
inline std::string listed(const std::map<std::string, int>& numbers) {
  std::string text;
  for (const auto& [name, number] : numbers) text += (text.empty() ? "" : ", ") + name + " " + std::to_string(number);
  return text.empty() ? "none" : text;
}

/// A dozen and a half of lines, however long the run was.
inline std::ostream& operator<<(std::ostream& stream, const Counts& counts) {
  stream << "storms: " << counts.storms << " of " << counts.actions << " actions; begun on " << listed(counts.stormsByManager)
         << "\nwindows opened: " << counts.windowsOpened << ", shown when activated: " << counts.windowsActivated
         << "\nlies: " << listed(counts.lies) << "\nproperty changes in floods of 10,000 in a second: " << counts.propertyChanges
         << ", titles of 2 kB set in the calm: " << counts.titles << "\nshortcuts pressed: " << counts.shortcuts
         << ", drags: " << counts.drags << "\napplications frozen: " << counts.clientsFrozen << ", killed: " << counts.clientsKilled
         << ", by others: " << counts.clientsEnded << "\nmonitors plugged or unplugged: " << counts.monitorChanges
         << "\nwindow managers replaced: " << counts.managersReplaced << ", killed: " << counts.managersKilled
         << ", failed by themselves: " << counts.managersFailed << "; X servers that did: " << counts.serversFailed
         << "\nwindows mapped again that nobody managed: " << counts.dropped << ", shown without being listed: " << counts.unmanaged
         << "\nwindows that their manager brought back neither with Tilora nor without: " << counts.forgotten
         << "\nkills of Tilora: " << counts.tiloraKilled << ", clean ends: " << counts.tiloraEnded
         << ", windows hidden at these: " << counts.hiddenShownAtEnd << ", of a killed one: " << counts.hiddenTakenOver
         << "\nplacements found in the settings: " << counts.placementsKept << "\nmost memory: " << counts.mostKilobytes
         << " kB, most descriptors: " << counts.mostDescriptors << "\n";
  return stream << "errors of X: " << listed(counts.xErrors) << "; not told of: " << counts.xErrorsUntold
                << "\nfaults: " << counts.faults.size() << "\nlost: " << counts.lost << "\n";
}

}  // namespace tilora::chaos
