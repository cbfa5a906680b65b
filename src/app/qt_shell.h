// The program's place on the desktop: its own windows, and what it opens.
#pragma once

#include <QString>
#include <QStringList>
#include <QWindow>
#include <functional>
#include <vector>

#include "platform/shell.h"

namespace tilora::app {

/// The pages that an address of the system's settings leads to.
struct SettingsPages {
  std::function<void()> accessibility;
  std::function<void()> loginItems;
};

/// Windows are those of Qt. Addresses of the system's settings open `pages`, others go to the desktop's own opener.
class QtShell : public Shell {
 public:
  /// `activate` raises a window and gives it the keyboard, whichever program is active.
  QtShell(SettingsPages pages, std::function<void(QWindow&)> activate);

  void activateSelf() override {}
  std::vector<std::shared_ptr<OwnWindow>> ownWindows() override;
  void openURL(std::string_view url) override;

 private:
  SettingsPages pages_;
  std::function<void(QWindow&)> activate_;
};

}  // namespace tilora::app
