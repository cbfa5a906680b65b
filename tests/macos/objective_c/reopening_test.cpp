// The user opens the program although it runs.
#include "platform/macos/reopening.h"

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

class ReopeningTest : public ObjectiveCTest {
 protected:
  void SetUp() override { system_.appKit.hasLaunched = true; }

  int reopened_ = 0;
};

TEST_F(ReopeningTest, EveryOpeningIsToldUntilTheWatchEnds) {
  auto watch = watchReopening([this] { ++reopened_; });
  fake::reopen();
  fake::reopen();
  EXPECT_EQ(reopened_, 2);
  watch.reset();
  fake::reopen();
  EXPECT_EQ(reopened_, 2);
}

TEST_F(ReopeningTest, AWatchMayEndItself) {
  Subscription watch;
  watch = watchReopening([&] {
    watch.reset();
    ++reopened_;
  });
  fake::reopen();
  fake::reopen();
  EXPECT_EQ(reopened_, 1);
}

}  // namespace
}  // namespace tilora::macos
