// The program's own place on the desktop: its windows, and addresses that the desktop opens for it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tilora {

/// One of the program's own windows.
class OwnWindow {
 public:
  virtual ~OwnWindow() = default;

  virtual std::string title() const = 0;
  virtual bool canBecomeKey() const = 0;
  virtual bool isMinimized() const = 0;
  /// Raises it above other programs' windows, whichever program is active.
  virtual void orderFrontRegardless() = 0;
  /// Raises it and gives it the keyboard.
  virtual void makeKeyAndOrderFront() = 0;
};

class Shell {
 public:
  virtual ~Shell() = default;

  /// Brings this program to the front, whichever is active.
  virtual void activateSelf() = 0;
  /// The program's own windows in the order the desktop lists them.
  virtual std::vector<std::shared_ptr<OwnWindow>> ownWindows() = 0;
  /// Asks the desktop to open an address; one that does not parse is ignored.
  virtual void openURL(std::string_view url) = 0;
};

}  // namespace tilora
