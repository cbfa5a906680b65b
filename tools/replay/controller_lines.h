// The script lines that start, use and stop the controller.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "controller/menu_model.h"
#include "controller/settings_window_model.h"
#include "controller/window_manager_controller.h"
#include "platform/simulated/simulated_desktop.h"
#include "replay/replay.h"
#include "replay/script_line.h"
#include "replay/trace.h"

namespace tilora::replay {

/// Carries lines out on a controller. While there is none they are read all the same and do nothing, but that a key is passed.
class ControllerLines {
 public:
  /// All of them must outlive this. The controller works on what `makeView` makes of the desktop.
  ControllerLines(simulated::SimulatedDesktop& desktop, Trace& trace, const DesktopViewMaker& makeView)
      : desktop_(desktop), trace_(trace), makeView_(makeView) {}

  /// Carries out a line whose "do" is `what`; false when it is not one of these lines. Throws `ScriptError`.
  bool run(const std::string& what, const ScriptLine& line);

  bool wasStarted() const { return wasStarted_; }

 private:
  using Handler = void (ControllerLines::*)(const ScriptLine&);

  /// The controller with what shows it. The later members know the earlier ones and go first.
  struct Session {
    explicit Session(std::unique_ptr<DesktopView> desktopView)
        : view(std::move(desktopView)),
          controller(view->interfaces()),
          menu(controller, [] {}),
          settingsWindow(controller, view->interfaces().keyMonitor) {}

    std::unique_ptr<DesktopView> view;
    WindowManagerController controller;
    MenuModel menu;
    SettingsWindowModel settingsWindow;
    Subscription changes;
  };

  void start(const ScriptLine& line);
  void stop(const ScriptLine& line);
  void notify(const ScriptLine& line);
  void hotKey(const ScriptLine& line);
  void menu(const ScriptLine& line);
  void padding(const ScriptLine& line);
  void startOnLogin(const ScriptLine& line);
  void record(const ScriptLine& line);
  void key(const ScriptLine& line);
  void resetShortcuts(const ScriptLine& line);
  void closeSettings(const ScriptLine& line);
  void requestAccess(const ScriptLine& line);
  void openAccessibilitySettings(const ScriptLine& line);
  void openLoginItems(const ScriptLine& line);
  void state(const ScriptLine& line);

  simulated::SimulatedDesktop& desktop_;
  Trace& trace_;
  const DesktopViewMaker& makeView_;
  std::unique_ptr<Session> session_;
  bool wasStarted_ = false;
};

}  // namespace tilora::replay
