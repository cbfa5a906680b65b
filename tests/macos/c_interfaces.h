// The macOS desktop as far as it is written against interfaces in C; the simulated desktop does the rest.
#pragma once

#include "fakes/fake_system.h"
#include "platform/macos/elements.h"
#include "platform/macos/hot_keys.h"
#include "platform/macos/trust.h"
#include "platform/macos/window_list.h"

namespace tilora::macos {

class InterfacesInC {
 public:
  explicit InterfacesInC(simulated::SimulatedDesktop& world) : system_(world) {}

  Desktop interfaces() {
    Desktop parts = system_.world().interfaces();
    return {parts.ownProcessId, accessibility_,   parts.workspace, parts.screens,  parts.pointer,   windowList_, trust_,
            hotKeys_,           parts.keyMonitor, parts.loginItem, parts.settings, parts.mainQueue, parts.shell};
  }

 private:
  fake::FakeSystem system_;
  AxAccessibility accessibility_{[this] { return system_.now(); }};
  WindowList windowList_;
  AxTrust trust_;
  CarbonHotKeys hotKeys_;
};

}  // namespace tilora::macos
