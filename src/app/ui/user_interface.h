// The windows of the program, made when they are first needed.
#pragma once

#include <QQmlEngine>
#include <QRect>
#include <QScreen>
#include <QTimer>
#include <functional>
#include <memory>

#include "app/ui/access_view_model.h"
#include "app/ui/menu_panel.h"
#include "app/ui/settings_window.h"

namespace tilora::app {

/// What the windows need of the desktop.
struct InterfaceParts {
  /// Must outlive the windows, as must the monitor.
  WindowManagerController& controller;
  KeyMonitor& keyMonitor;
  /// Shows a key press of the settings window to the monitor; true: it was swallowed.
  SettingsWindow::KeyFilter monitorsKey;
  /// The part of a screen that panels leave free, in Qt's coordinates.
  std::function<QRect(const QScreen&)> visibleFrame;
  /// Does something while the window is active that the user was in before one of this program's, perhaps later; not when there is none.
  std::function<void(std::function<void()>)> inUsersWindow;
  /// Called when the menu has the whole keyboard.
  std::function<void()> keyboardTaken;
  std::function<void()> quit;
  /// Called when everything that the windows needed has been let go of.
  std::function<void()> released;
  AccessParts access;
  /// Called with the menu before it is first shown.
  std::function<void(MenuPanel&)> menuMade = [](MenuPanel&) {};
};

/// Draws with the software renderer. While no window is open, nothing of QML is in memory, except for some time after the last one closed.
/// Main thread only.
class UserInterface {
 public:
  explicit UserInterface(InterfaceParts parts);
  UserInterface(const UserInterface&) = delete;
  UserInterface& operator=(const UserInterface&) = delete;
  ~UserInterface();

  /// Opens the menu at an icon, or closes it when it is open.
  void toggleMenu(const QRect& icon);
  void closeMenu();
  /// Shows the settings window; it is raised when it is open. With `offersMenu`, it also does what the menu does.
  void openSettings(bool offersMenu);
  /// What the settings command does: opens the window and raises it until it stands.
  void performSettingsCommand();
  /// Whether a settings window that is opened from the menu offers what the menu does.
  void setOffersMenu(bool offersMenu) { offersMenu_ = offersMenu; }

  /// Shows where consent is given and taken back.
  void openAccess();

  /// Null while it has not been made.
  MenuPanel* menuPanel() const { return panel_.get(); }
  SettingsWindow* settingsWindow() const { return settingsWindow_.get(); }
  QQuickView* accessWindow() const { return accessWindow_.get(); }

 private:
  QQmlEngine& engine();
  void releaseWhenIdle();

  InterfaceParts parts_;
  bool offersMenu_ = false;
  QTimer idle_;
  MenuViewModel menu_;
  /// The same in the settings window, which is the active one then.
  MenuViewModel settingsMenu_;
  SettingsViewModel settings_;
  AccessViewModel access_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<MenuPanel> panel_;
  std::unique_ptr<SettingsWindow> settingsWindow_;
  std::unique_ptr<QQuickView> accessWindow_;
};

}  // namespace tilora::app
