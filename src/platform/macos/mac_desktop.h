// The macOS desktop: every interface over the frameworks of the system.
#pragma once

#include "platform/desktop.h"
#include "platform/macos/elements.h"
#include "platform/macos/hot_keys.h"
#include "platform/macos/key_monitor.h"
#include "platform/macos/login_service.h"
#include "platform/macos/main_queue.h"
#include "platform/macos/pointer.h"
#include "platform/macos/screens.h"
#include "platform/macos/shell.h"
#include "platform/macos/trust.h"
#include "platform/macos/user_defaults.h"
#include "platform/macos/window_list.h"
#include "platform/macos/workspace.h"

namespace tilora::macos {

/// Main thread only. The application object of the process must be there first.
class MacDesktop {
 public:
  explicit MacDesktop(ProcessId ownProcessId, CallGuard::Clock now = std::chrono::steady_clock::now)
      : ownProcessId_(ownProcessId), accessibility_(std::move(now)) {}
  MacDesktop(const MacDesktop&) = delete;
  MacDesktop& operator=(const MacDesktop&) = delete;
  ~MacDesktop() = default;

  /// Valid while this lives.
  Desktop interfaces() {
    return {ownProcessId_, accessibility_, workspace_, screens_,  pointer_,   windowList_, trust_,
            hotKeys_,      keyMonitor_,    loginItem_, settings_, mainQueue_, shell_};
  }

 private:
  const ProcessId ownProcessId_;
  AxAccessibility accessibility_;
  MacWorkspace workspace_;
  MacScreens screens_;
  MacPointer pointer_;
  WindowList windowList_;
  AxTrust trust_;
  MacKeyMonitor keyMonitor_;
  CarbonHotKeys hotKeys_{[this](std::uint32_t keyCode, std::uint32_t modifiers) { return keyMonitor_.offer(keyCode, modifiers); }};
  LoginService loginItem_;
  UserDefaults settings_;
  MacMainQueue mainQueue_;
  MacShell shell_;
};

}  // namespace tilora::macos
