// The simulated desktop, and any other whose world it is, under the tests of the contract.
#pragma once

#include "platform/simulated/simulated_desktop.h"
#include "tested_desktop.h"

namespace tilora::contract {

/// A user on a simulated desktop with one screen.
class SimulatedUser : public TestedDesktop {
 public:
  SimulatedUser();

  Desktop interfaces() override { return world_.interfaces(); }
  bool eventually(const std::function<bool()>& holds) override;
  ProcessId open(const std::string& title) override;
  void activate(ProcessId pid) override;
  void closeWindow(ProcessId pid) override { world_.close(windowOf(pid)); }
  void quit(ProcessId pid) override;
  void holdButton(bool held) override { world_.pointer().buttons = held ? 1 : 0; }
  void pressShortcut() override;
  void setTrusted(bool trusted) override { world_.trust().trusted = trusted; }

 protected:
  simulated::SimulatedDesktop& world() { return world_; }

 private:
  /// The only window of an application is called like its process.
  static simulated::WindowId windowOf(ProcessId pid) { return static_cast<simulated::WindowId>(pid); }

  simulated::SimulatedDesktop world_;
  ProcessId lastPid_ = 99;
};

}  // namespace tilora::contract
