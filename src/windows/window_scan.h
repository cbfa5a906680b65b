// The managed windows of the applications that one pass or command looks at.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/desktop.h"
#include "windows/identity.h"
#include "windows/managed_window.h"
#include "windows/screen_keys.h"

namespace tilora {

/// Collects the managed windows of applications, one application after the other. It owns the texts of their records.
class WindowScan {
 public:
  /// Whether the identities of an application's windows are of use to whoever scans.
  using NamesMatter = std::function<bool(std::string_view appIdentifier)>;

  /// Titles and identifiers are not even read where names do not matter. The desktop's parts must outlive the scan.
  explicit WindowScan(const Desktop& desktop, NamesMatter namesMatter = {});

  /// Appends the managed windows of an application in its order; none when they cannot be listed.
  void add(const RunningApplication& application);

  /// Valid while the scan lives; an addition may move them.
  const std::vector<ManagedWindow>& windows() const { return windows_; }
  /// Their keys; equal ones collapse.
  const WindowKeySet& keys() const { return keys_; }

 private:
  void appendSeed(Element window, ProcessId pid, bool isNamed);
  void appendWindows(std::string_view appIdentifier, const std::vector<std::string_view>* identities);

  Desktop desktop_;
  NamesMatter namesMatter_;
  WindowScreens screens_;
  std::unique_ptr<TextPool> texts_;
  WindowNamer namer_;
  std::vector<ManagedWindow> windows_;
  WindowKeySet keys_;
  /// Those of the application at hand.
  std::vector<WindowIdentitySeed> seeds_;
};

}  // namespace tilora
