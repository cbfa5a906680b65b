// The resident process on macOS: the engine, the icon and the windows in one.
#pragma once

#include <QMenuBar>
#include <QWindow>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "app/fetch_program.h"
#include "app/message_box_alert.h"
#include "app/ui/published_changes.h"
#include "app/ui/user_interface.h"
#include "app/update_check.h"
#include "controller/window_manager_controller.h"
#include "platform/macos/mac_desktop.h"
#include "platform/macos/status_item.h"

namespace tilora::app {

/// Works from its making to its end. There must be a QApplication, and somebody must run its event loop.
class MacProgram {
 public:
  /// The NSView of a window.
  using ViewOf = std::function<std::uintptr_t(QWindow&)>;

  static std::uintptr_t nativeView(QWindow& window) { return window.winId(); }

  /// Looks for a new release under the address `updateSite`.
  explicit MacProgram(const std::string& updateSite, ViewOf viewOf = nativeView);
  MacProgram(const MacProgram&) = delete;
  MacProgram& operator=(const MacProgram&) = delete;
  ~MacProgram();

  UserInterface& interface() { return interface_; }

 private:
  InterfaceParts interfaceParts();
  void setUp(MenuPanel& panel);
  void addSettingsCommand();
  void toggleMenu(const Rect& icon);
  void showTrust();

  const ViewOf viewOf_;
  // In the order in which each needs the ones before it.
  macos::MacDesktop desktop_;
  const Desktop parts_;
  FetchProgram fetcher_;
  MessageBoxAlert alert_;
  UpdateCheck updateCheck_;
  WindowManagerController controller_;
  UserInterface interface_;
  macos::StatusItem icon_;
  PublishedChanges trust_;
  QMenuBar menuBar_;
  Subscription pressesElsewhere_;
  Subscription reopening_;
};

}  // namespace tilora::app
