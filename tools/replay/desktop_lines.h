// The script lines that say what is and what happens on the desktop.
#pragma once

#include <string>
#include <unordered_set>

#include "platform/simulated/simulated_desktop.h"
#include "replay/script_line.h"

namespace tilora::replay {

/// Carries lines out on a desktop, and knows every id that was ever declared: to name one that is gone is no error and does nothing.
class DesktopLines {
 public:
  explicit DesktopLines(simulated::SimulatedDesktop& desktop) : desktop_(desktop) {}

  /// Carries out a line whose "do" is `what`; false when it is not one of these lines. Throws `ScriptError`.
  bool run(const std::string& what, const ScriptLine& line);

  /// From now on no application can be declared to be the program's own.
  void closeOwnProcess() { isOwnProcessClosed_ = true; }

 private:
  using Handler = void (DesktopLines::*)(const ScriptLine&);

  void screen(const ScriptLine& line);
  void removeScreen(const ScriptLine& line);
  void mainScreen(const ScriptLine& line);
  void app(const ScriptLine& line);
  void quit(const ScriptLine& line);
  void window(const ScriptLine& line);
  void close(const ScriptLine& line);
  void attribute(const ScriptLine& line);
  void settable(const ScriptLine& line);
  void windowsUnreadable(const ScriptLine& line);
  void front(const ScriptLine& line);
  void hidden(const ScriptLine& line);
  void mouse(const ScriptLine& line);
  void trust(const ScriptLine& line);
  void defaults(const ScriptLine& line);
  void login(const ScriptLine& line);
  void hotKeyTaken(const ScriptLine& line);

  void claimOwnProcess(ProcessId pid);
  ProcessId declaredPid(const ScriptLine& line) const;
  simulated::WindowId declaredWindow(const ScriptLine& line) const;
  simulated::WindowTraits windowTraits(const ScriptLine& line, simulated::WindowId id) const;

  simulated::SimulatedDesktop& desktop_;
  std::unordered_set<ProcessId> declaredPids_;
  std::unordered_set<simulated::WindowId> declaredWindows_;
  bool isOwnProcessDeclared_ = false;
  bool isOwnProcessClosed_ = false;
};

}  // namespace tilora::replay
