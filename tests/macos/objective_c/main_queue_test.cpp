// Work for later on the main thread.
#include "platform/macos/main_queue.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

using namespace std::chrono_literals;

class MainQueueTest : public ObjectiveCTest {
 protected:
  std::optional<MacMainQueue> queue_{std::in_place};
  int ran_ = 0;
};

TEST_F(MainQueueTest, PostedWorkRunsInTheNextTurn) {
  queue_->post([this] { ++ran_; });
  EXPECT_EQ(ran_, 0);
  world_->clock().runPosted();
  EXPECT_EQ(ran_, 1);
}

TEST_F(MainQueueTest, DelayedWorkRunsOnceItsTimeHasCome) {
  queue_->postAfter(200ms, [this] { ++ran_; });
  world_->clock().advance(199ms);
  EXPECT_EQ(ran_, 0);
  world_->clock().advance(1ms);
  EXPECT_EQ(ran_, 1);
}

TEST_F(MainQueueTest, RepeatedWorkAlsoRunsWhileAMenuIsOpen) {
  const auto timer = queue_->repeat(250ms, [this] { ++ran_; });
  system_.appKit.tracksMenu = true;
  world_->clock().advance(1000ms);
  EXPECT_EQ(ran_, 4);
}

TEST_F(MainQueueTest, WhatRepeatedWorkLeavesToThePoolGoesBeforeTheNextEvent) {
  const auto timer = queue_->repeat(250ms, fake::leaveAnObjectToThePool);
  const auto before = fake::liveObjectiveCObjects();
  world_->clock().advance(1000ms);
  EXPECT_EQ(fake::liveObjectiveCObjects(), before);
}

TEST_F(MainQueueTest, WhatQueuedWorkLeavesToThePoolGoesBeforeTheNextEvent) {
  const auto before = fake::liveObjectiveCObjects();
  fake::inPool([this] {
    queue_->post(fake::leaveAnObjectToThePool);
    queue_->postAfter(10ms, fake::leaveAnObjectToThePool);
  });
  world_->clock().advance(10ms);
  EXPECT_EQ(fake::queuedBlocks(), 0);
  EXPECT_EQ(fake::liveObjectiveCObjects(), before);
}

TEST_F(MainQueueTest, TheSystemDoesNotSlowDownATimerOfAProgramThatShowsNoWindow) {
  auto timer = queue_->repeat(250ms, [] {});
  EXPECT_EQ(fake::runningActivities(), std::vector<std::uint64_t>{0x00EFFFFF});
  timer.reset();
  EXPECT_TRUE(fake::runningActivities().empty());
}

TEST_F(MainQueueTest, ATimerIsGoneWithItsSubscription) {
  auto timer = queue_->repeat(250ms, [] {});
  EXPECT_EQ(fake::runningTimers(), 1U);
  timer.reset();
  EXPECT_EQ(fake::runningTimers(), 0U);
}

TEST_F(MainQueueTest, WhatIsQueuedWhenTheQueueEndsNeverRuns) {
  queue_->post([this] { ++ran_; });
  queue_->postAfter(10ms, [this] { ++ran_; });
  const auto timer = queue_->repeat(10ms, [this] { ++ran_; });
  queue_.reset();
  world_->clock().advance(100ms);
  EXPECT_EQ(ran_, 0);
}

}  // namespace
}  // namespace tilora::macos
