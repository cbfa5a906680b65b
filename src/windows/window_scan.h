// The managed windows of the applications that one pass or command looks at.
#pragma once

#include <memory>
#include <vector>

#include "platform/desktop.h"
#include "windows/identity.h"
#include "windows/managed_window.h"

namespace tilora {

/// Collects the managed windows of applications, one application after the other. It owns the texts of their records.
class WindowScan {
 public:
  /// The desktop's parts must outlive the scan.
  explicit WindowScan(const Desktop& desktop);

  /// Appends the managed windows of an application in its order; none when they cannot be listed.
  void add(const RunningApplication& application);

  /// Valid while the scan lives; an addition may move them.
  const std::vector<ManagedWindow>& windows() const { return windows_; }
  /// Their keys; equal ones collapse.
  const WindowKeySet& keys() const { return keys_; }

 private:
  void appendSeed(Element window, ProcessId pid);

  Desktop desktop_;
  std::unique_ptr<TextPool> texts_;
  WindowNamer namer_;
  std::vector<ManagedWindow> windows_;
  WindowKeySet keys_;
  /// Those of the application at hand.
  std::vector<WindowIdentitySeed> seeds_;
};

}  // namespace tilora
