// The ground of every test of the Objective-C++ half.
#pragma once

#include <optional>

#include "mac_test.h"

namespace tilora::macos {

/// One turn of the main loop over the fake frameworks. Fails a test that leaves an object, a block, an observer, a timer, a monitor, an
/// activity, a handler or an icon behind.
class ObjectiveCTest : public MacTest {
 protected:
  void TearDown() override {
    fake::closeWindows();
    turn_.reset();
    EXPECT_EQ(fake::liveObjectiveCObjects(), 0);
    EXPECT_EQ(fake::installedObservers(), 0U);
    EXPECT_EQ(fake::runningTimers(), 0U);
    EXPECT_EQ(fake::installedMonitors(), 0U);
    EXPECT_TRUE(fake::runningActivities().empty());
    EXPECT_FALSE(fake::isReopeningWatched());
    EXPECT_TRUE(fake::shownStatusItems().empty());
    MacTest::TearDown();
  }

  std::optional<fake::Pool> turn_{std::in_place};
};

}  // namespace tilora::macos
