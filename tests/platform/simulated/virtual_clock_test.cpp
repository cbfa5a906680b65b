// The order in which work runs under the virtual clock.
#include "platform/simulated/virtual_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tilora::simulated {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class VirtualClockTest : public testing::Test {
 protected:
  std::function<void()> note(std::string name) {
    return [this, name = std::move(name)] { ran.emplace_back(clock.now().count(), name); };
  }

  VirtualClock clock;
  std::vector<std::pair<std::int64_t, std::string>> ran;
};

TEST_F(VirtualClockTest, PostedWorkWaitsAndRunsInTheOrderOfPosting) {
  clock.post(note("first"));
  clock.post([this] {
    note("second")();
    clock.post(note("fourth"));
  });
  clock.post(note("third"));
  EXPECT_THAT(ran, IsEmpty());

  clock.runPosted();

  EXPECT_THAT(ran, ElementsAre(Pair(0, "first"), Pair(0, "second"), Pair(0, "third"), Pair(0, "fourth")));
}

TEST_F(VirtualClockTest, DelayedWorkRunsAtItsDueTimeTheEndIncluded) {
  clock.postAfter(200ms, note("late"));
  clock.postAfter(100ms, note("early"));

  clock.advance(99ms);
  EXPECT_THAT(ran, IsEmpty());
  clock.advance(101ms);

  EXPECT_THAT(ran, ElementsAre(Pair(100, "early"), Pair(200, "late")));
  EXPECT_EQ(clock.now(), 200ms);
}

TEST_F(VirtualClockTest, OfTwoDueAtTheSameTimeTheOneQueuedFirstRunsFirst) {
  const auto timer = clock.repeat(250ms, note("tick"));
  clock.advance(50ms);
  clock.postAfter(200ms, note("delayed"));
  clock.postAfter(450ms, note("also delayed"));

  clock.advance(450ms);

  EXPECT_THAT(ran, ElementsAre(Pair(250, "tick"), Pair(250, "delayed"), Pair(500, "also delayed"), Pair(500, "tick")));
}

TEST_F(VirtualClockTest, ATimerFiresUntilItsSubscriptionEnds) {
  auto timer = clock.repeat(10ms, note("tick"));
  clock.advance(25ms);
  timer.reset();
  clock.advance(25ms);

  EXPECT_THAT(ran, ElementsAre(Pair(10, "tick"), Pair(20, "tick")));
}

TEST_F(VirtualClockTest, ATimerMayEndItself) {
  Subscription timer;
  timer = clock.repeat(10ms, [&] {
    note("tick")();
    timer.reset();
  });
  clock.advance(50ms);

  EXPECT_THAT(ran, ElementsAre(Pair(10, "tick")));
}

TEST_F(VirtualClockTest, WorkThatIsPostedInsideAnAdvanceRunsAtItsEnd) {
  clock.postAfter(10ms, [this] { clock.post(note("posted")); });
  clock.advance(30ms);

  EXPECT_THAT(ran, ElementsAre(Pair(30, "posted")));
}

}  // namespace
}  // namespace tilora::simulated
