// The main queue on Qt's event loop.
#include "app/qt_main_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "event_loop.h"

namespace tilora::app {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::ElementsAre;

TEST(QtMainQueue, PostedWorkRunsInTheOrderOfPostingAndNotBeforeTheNextTurn) {
  EventLoop loop;
  QtMainQueue queue;
  std::vector<int> ran;
  queue.post([&] {
    ran.push_back(1);
    queue.post([&] { ran.push_back(3); });
  });
  queue.post([&] { ran.push_back(2); });
  EXPECT_TRUE(ran.empty());
  ASSERT_TRUE(loop.runUntil([&] { return ran.size() == 3; }));
  EXPECT_THAT(ran, ElementsAre(1, 2, 3));
}

TEST(QtMainQueue, DelayedWorkRunsOnceAndNotBeforeItsDelay) {
  EventLoop loop;
  QtMainQueue queue;
  const auto start = steady_clock::now();
  std::optional<steady_clock::duration> first;
  int runs = 0;
  queue.postAfter(milliseconds(80), [&] {
    ++runs;
    first = steady_clock::now() - start;
  });
  bool later = false;
  queue.postAfter(milliseconds(200), [&] { later = true; });
  ASSERT_TRUE(loop.runUntil([&] { return later; }));
  EXPECT_EQ(runs, 1);
  EXPECT_GE(first.value(), milliseconds(80));
}

TEST(QtMainQueue, ARepeatFiresFirstAfterOneIntervalAndKeepsItsPace) {
  EventLoop loop;
  QtMainQueue queue;
  const auto start = steady_clock::now();
  std::vector<steady_clock::duration> ticks;
  const auto timer = queue.repeat(milliseconds(50), [&] { ticks.push_back(steady_clock::now() - start); });
  ASSERT_TRUE(loop.runUntil([&] { return ticks.size() == 5; }));
  EXPECT_GE(ticks.front(), milliseconds(50));
  EXPECT_GE(ticks.back(), milliseconds(250));
}

TEST(QtMainQueue, AnEndedRepeatNeverFiresAgainEvenWhenItEndsItself) {
  EventLoop loop;
  QtMainQueue queue;
  int ticks = 0;
  Subscription timer;
  timer = queue.repeat(milliseconds(5), [&] {
    ++ticks;
    timer.reset();
  });
  bool later = false;
  queue.postAfter(milliseconds(100), [&] { later = true; });
  ASSERT_TRUE(loop.runUntil([&] { return later; }));
  EXPECT_EQ(ticks, 1);
}

TEST(QtMainQueue, NothingRunsAfterTheQueueEndedAndASubscriptionMayOutliveIt) {
  EventLoop loop;
  auto queue = std::make_unique<QtMainQueue>();
  bool ran = false;
  queue->post([&] { ran = true; });
  queue->postAfter(milliseconds(5), [&] { ran = true; });
  auto timer = queue->repeat(milliseconds(5), [&] { ran = true; });
  queue.reset();
  QtMainQueue other;
  bool later = false;
  other.postAfter(milliseconds(60), [&] { later = true; });
  ASSERT_TRUE(loop.runUntil([&] { return later; }));
  timer.reset();
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace tilora::app
