// The signals that ask the program to end.
#include "app/termination_signals.h"

#include <gtest/gtest.h>

#include <csignal>

#include "event_loop.h"

namespace tilora::app {
namespace {

class TerminationSignal : public testing::TestWithParam<int> {};

TEST_P(TerminationSignal, AsksToQuitFromTheEventLoop) {
  EventLoop loop;
  int asked = 0;
  const TerminationSignals signals([&] { ++asked; });
  ASSERT_EQ(std::raise(GetParam()), 0);
  EXPECT_EQ(asked, 0);
  EXPECT_TRUE(loop.runUntil([&] { return asked == 1; }));
}

INSTANTIATE_TEST_SUITE_P(All, TerminationSignal, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(TerminationSignals, EndTheProcessAgainOnceTheyAreNoLongerWaitedFor) {
  EventLoop loop;
  {
    const TerminationSignals signals([] {});
  }
  EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace tilora::app
