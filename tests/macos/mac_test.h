// The ground of every test of the macOS desktop: a simulated desktop seen through the fake frameworks.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "fakes/fake_system.h"
#include "platform/simulated/builder.h"

namespace tilora::macos {

/// Holds the fake system, and fails a test that leaves an object, a hot key or an event handler behind.
class MacTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(fake::liveObjects(), 0);
    EXPECT_EQ(fake::registeredHotKeys(), 0U);
    EXPECT_EQ(fake::installedHandlers(), 0U);
  }

  /// The desktop that the system answers from: a screen, and application 100 with window 7.
  static std::unique_ptr<simulated::SimulatedDesktop> notesDesktop() {
    return simulated::desktop()
        .screen(1, {0, 0, 1440, 900}, {0, 0, 1440, 875})
        .app(100, "com.example.notes")
        .window(7, {.title = "Notes", .frame = {50, 60, 400, 300}})
        .front(100, 7)
        .build();
  }

  std::unique_ptr<simulated::SimulatedDesktop> world_ = notesDesktop();
  fake::FakeSystem system_{*world_};
};

}  // namespace tilora::macos
