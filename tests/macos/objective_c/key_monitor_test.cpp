// Key presses that reach the program's own windows.
#include "platform/macos/key_monitor.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"
#include "platform/macos/mac_desktop.h"

namespace tilora::macos {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t leftBracket = 33;
constexpr std::uint32_t escape = 53;
constexpr std::uint32_t optionShift = 0xA00;
constexpr std::uint64_t commandFlag = 1U << 20;
constexpr std::uint64_t optionShiftFlags = (1U << 19) | (1U << 17);

class KeyMonitorTest : public ObjectiveCTest {
 protected:
  Subscription watch(bool swallows) {
    auto monitor = monitor_.install([this, swallows](const KeyEvent& event) {
      seen_.emplace_back(event.keyCode, event.flags);
      return swallows;
    });
    EXPECT_TRUE(monitor);
    return std::move(*monitor);
  }

  MacKeyMonitor monitor_;
  std::vector<std::pair<std::uint32_t, std::uint64_t>> seen_;
};

TEST_F(KeyMonitorTest, AKeyArrivesWithTheSystemsCodeAndFlags) {
  const auto monitor = watch(true);
  EXPECT_TRUE(world_->keyMonitor().press({escape, commandFlag}));
  EXPECT_THAT(seen_, ElementsAre(std::pair(escape, commandFlag)));
}

TEST_F(KeyMonitorTest, AKeyThatIsNotSwallowedGoesOn) {
  const auto monitor = watch(false);
  EXPECT_FALSE(world_->keyMonitor().press({escape, 0}));
  EXPECT_EQ(seen_.size(), 1U);
}

TEST_F(KeyMonitorTest, ARemovedMonitorSeesNothing) {
  auto monitor = watch(true);
  monitor.reset();
  EXPECT_FALSE(world_->keyMonitor().press({escape, 0}));
  EXPECT_TRUE(seen_.empty());
}

TEST_F(KeyMonitorTest, AMonitorMayEndItself) {
  std::optional<Subscription> monitor;
  monitor = monitor_.install([&](const KeyEvent&) {
    monitor.reset();
    return true;
  });
  EXPECT_TRUE(world_->keyMonitor().press({escape, 0}));
  EXPECT_FALSE(world_->keyMonitor().press({escape, 0}));
}

TEST_F(KeyMonitorTest, AMonitorThatTheSystemRefusesIsNone) {
  system_.appKit.canInstallMonitors = false;
  EXPECT_FALSE(monitor_.install([](const KeyEvent&) { return true; }));
}

class RecordingAShortcut : public ObjectiveCTest {
 protected:
  void SetUp() override {
    handler_ = parts_.hotKeys.installHandler([this](std::uint32_t id) { fired_.push_back(id); });
    ASSERT_TRUE(parts_.hotKeys.registerHotKey(1, leftBracket, optionShift));
    monitor_ = parts_.keyMonitor.install([this](const KeyEvent& event) {
      seen_.push_back(event.flags);
      return true;
    });
    ASSERT_TRUE(monitor_);
  }
  void TearDown() override {
    monitor_.reset();
    handler_.reset();
    desktop_.reset();
    ObjectiveCTest::TearDown();
  }

  std::optional<MacDesktop> desktop_{std::in_place, 1};
  Desktop parts_ = desktop_->interfaces();
  std::optional<Subscription> handler_;
  std::optional<Subscription> monitor_;
  std::vector<std::uint32_t> fired_;
  std::vector<std::uint64_t> seen_;
};

TEST_F(RecordingAShortcut, ACombinationOfThisProgramIsRecordedAndDoesNotFire) {
  system_.appKit.isActive = true;
  world_->hotKeys().press({leftBracket, optionShift});
  EXPECT_THAT(seen_, ElementsAre(optionShiftFlags));
  EXPECT_TRUE(fired_.empty());
}

TEST_F(RecordingAShortcut, ACombinationFiresWhileAnotherProgramIsActive) {
  world_->hotKeys().press({leftBracket, optionShift});
  EXPECT_TRUE(seen_.empty());
  EXPECT_THAT(fired_, ElementsAre(1U));
}

TEST_F(RecordingAShortcut, ACombinationFiresAgainAfterTheRecording) {
  system_.appKit.isActive = true;
  monitor_.reset();
  world_->hotKeys().press({leftBracket, optionShift});
  EXPECT_THAT(fired_, ElementsAre(1U));
}

}  // namespace
}  // namespace tilora::macos
