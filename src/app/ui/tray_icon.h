// The icon in the desktop's panel.
#pragma once

#include <QDBusServiceWatcher>
#include <QIcon>
#include <QRect>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>

namespace tilora::app {

/// The picture of the icon: a stack of windows when windows can be controlled, a warning when not. Crisp at every size, and readable on
/// light and dark panels.
QIcon trayPicture(bool trusted);

/// Shown wherever a panel takes icons, as a StatusNotifierItem or over XEmbed, also when the panel comes up later or starts anew. Main
/// thread only.
class TrayIcon {
 public:
  struct Clicks {
    /// Gets the icon's place on the screen, in Qt's coordinates; the pointer's place where the panel does not tell.
    std::function<void(const QRect&)> openMenu;
    /// With the middle button.
    std::function<void()> openAccess;
  };
  explicit TrayIcon(Clicks clicks);
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;
  ~TrayIcon();

  void setTrusted(bool trusted);
  /// Whether there is a panel that shows it.
  static bool hasPlace() { return QSystemTrayIcon::isSystemTrayAvailable(); }

 private:
  void install();

  Clicks clicks_;
  bool trusted_ = false;
  QDBusServiceWatcher watcher_;
  std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace tilora::app
