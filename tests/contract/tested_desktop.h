// A desktop with a user on it, as the tests of the contract see it.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/desktop.h"

namespace tilora::contract {

/// What each desktop does its own way: the user's part, and waiting. Every operation has taken effect when it returns, or shows through
/// `eventually`.
class TestedDesktop {
 public:
  TestedDesktop() = default;
  TestedDesktop(const TestedDesktop&) = delete;
  TestedDesktop& operator=(const TestedDesktop&) = delete;
  virtual ~TestedDesktop() = default;

  /// Valid while the desktop lives. It is trusted.
  virtual Desktop interfaces() = 0;
  /// Lets the desktop's events in until `holds` answers true; false when that takes too long.
  virtual bool eventually(const std::function<bool()>& holds) = 0;

  /// Starts an ordinary application with one ordinary window, which comes to the front.
  virtual ProcessId open(const std::string& title) = 0;
  virtual void activate(ProcessId pid) = 0;
  virtual void closeWindow(ProcessId pid) = 0;
  virtual void quit(ProcessId pid) = 0;
  /// Holds or releases the primary button over no window.
  virtual void holdButton(bool held) = 0;
  /// Presses Option and Shift with the left bracket, key code 33.
  virtual void pressShortcut() = 0;
  virtual void setTrusted(bool trusted) = 0;
};

/// One desktop to try.
struct DesktopKind {
  std::string name;
  std::function<std::unique_ptr<TestedDesktop>()> make;
};

inline std::ostream& operator<<(std::ostream& out, const DesktopKind& kind) { return out << kind.name; }

/// The desktops of this test program.
std::vector<DesktopKind> desktopKinds();

}  // namespace tilora::contract
