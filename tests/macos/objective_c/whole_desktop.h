// The macOS desktop, the whole of it, over the fake frameworks.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "fakes/fake_system.h"
#include "platform/macos/mac_desktop.h"

namespace tilora::macos {

/// Fails a test that leaves an object, a hot key, an event handler, an observer, a timer or a monitor behind.
class WholeDesktop {
 public:
  explicit WholeDesktop(simulated::SimulatedDesktop& world) : system_(world) {}
  WholeDesktop(const WholeDesktop&) = delete;
  WholeDesktop& operator=(const WholeDesktop&) = delete;
  ~WholeDesktop() {
    desktop_.reset();
    turn_.reset();
    EXPECT_EQ(fake::liveObjects(), 0);
    EXPECT_EQ(fake::registeredHotKeys(), 0U);
    EXPECT_EQ(fake::installedHandlers(), 0U);
    EXPECT_EQ(fake::installedObservers(), 0U);
    EXPECT_EQ(fake::runningTimers(), 0U);
    EXPECT_EQ(fake::installedMonitors(), 0U);
    EXPECT_TRUE(fake::runningActivities().empty());
    // Work that is still on the main queue belongs to the queue.
    EXPECT_LE(fake::liveObjectiveCObjects(), fake::queuedBlocks());
  }

  Desktop interfaces() { return desktop_->interfaces(); }

 private:
  fake::FakeSystem system_;
  std::optional<fake::Pool> turn_{std::in_place};
  std::optional<MacDesktop> desktop_{std::in_place, system_.world().interfaces().ownProcessId, [this] { return system_.now(); }};
};

}  // namespace tilora::macos
