// A desktop: the set of interfaces that the engine is given.
#pragma once

#include "platform/accessibility.h"
#include "platform/hot_keys.h"
#include "platform/key_monitor.h"
#include "platform/login_item.h"
#include "platform/main_queue.h"
#include "platform/pointer.h"
#include "platform/screens.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/trust.h"
#include "platform/window_server.h"
#include "platform/workspace.h"

namespace tilora {

/// References to the parts of one desktop. Whoever makes them keeps them alive longer than everything that holds this.
struct Desktop {
  ProcessId ownProcessId;
  Accessibility& accessibility;
  Workspace& workspace;
  Screens& screens;
  Pointer& pointer;
  WindowServer& windowServer;
  Trust& trust;
  HotKeys& hotKeys;
  KeyMonitor& keyMonitor;
  LoginItem& loginItem;
  SettingsStore& settings;
  MainQueue& mainQueue;
  Shell& shell;
};

}  // namespace tilora
