// Applications that hang must not hold up the program.
#include "platform/macos/call_guard.h"

#include <gtest/gtest.h>

namespace tilora::macos {
namespace {

using namespace std::chrono_literals;

class HungApplication : public testing::Test {
 protected:
  /// A call of the application `pid` that takes `duration` and ends with `error`.
  AXError call(ProcessId pid, std::chrono::milliseconds duration, AXError error) {
    return guard_.call(pid, [&] {
      ++calls_;
      now_ += duration;
      return error;
    });
  }

  std::chrono::steady_clock::time_point now_{};
  int calls_ = 0;
  CallGuard guard_{[this] { return now_; }};
};

TEST_F(HungApplication, IsLeftAloneAfterATimeout) {
  EXPECT_EQ(call(100, 250ms, kAXErrorCannotComplete), kAXErrorCannotComplete);
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorCannotComplete);
  EXPECT_EQ(calls_, 1);
}

TEST_F(HungApplication, IsAskedAgainAfterTheRest) {
  call(100, 250ms, kAXErrorCannotComplete);
  now_ += CallGuard::rest - 1ms;
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorCannotComplete);
  now_ += 1ms;
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorSuccess);
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorSuccess);
}

TEST_F(HungApplication, DoesNotStandInTheWayOfOthers) {
  call(100, 250ms, kAXErrorCannotComplete);
  EXPECT_EQ(call(200, 0ms, kAXErrorSuccess), kAXErrorSuccess);
}

TEST_F(HungApplication, IsNotOneThatFailsAtOnce) {
  call(100, 1ms, kAXErrorCannotComplete);
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorSuccess);
}

TEST_F(HungApplication, IsNotOneThatAnswersLateButAnswers) {
  EXPECT_EQ(call(100, 240ms, kAXErrorSuccess), kAXErrorSuccess);
  EXPECT_EQ(call(100, 240ms, kAXErrorNoValue), kAXErrorNoValue);
  EXPECT_EQ(call(100, 0ms, kAXErrorSuccess), kAXErrorSuccess);
}

}  // namespace
}  // namespace tilora::macos
