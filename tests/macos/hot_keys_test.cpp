// System-wide key combinations through Carbon events.
#include "platform/macos/hot_keys.h"

#include <gmock/gmock.h>

#include "mac_test.h"

namespace tilora::macos {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t leftBracket = 33;
constexpr std::uint32_t rightBracket = 30;
constexpr std::uint32_t optionShift = 0xA00;
constexpr OSType otherSignature = 0x6F746872;

class CarbonEvents : public MacTest {
 protected:
  Subscription listen() {
    auto handler = hotKeys_->installHandler([this](std::uint32_t id) { pressed_.push_back(id); });
    EXPECT_TRUE(handler);
    return std::move(*handler);
  }
  void TearDown() override {
    hotKeys_.reset();
    MacTest::TearDown();
  }

  std::unique_ptr<CarbonHotKeys> hotKeys_ = std::make_unique<CarbonHotKeys>();
  std::vector<std::uint32_t> pressed_;
};

TEST_F(CarbonEvents, ACombinationIsRegisteredAsThisProgramsWithoutOptions) {
  EXPECT_TRUE(hotKeys_->registerHotKey(3, leftBracket, optionShift));
  EXPECT_THAT(system_.hotKeyCalls, ElementsAre(fake::HotKeyCall{0x534C4457, 3, leftBracket, optionShift, 0}));
}

TEST_F(CarbonEvents, APressReachesTheHandlerWithItsId) {
  const auto handler = listen();
  (void)hotKeys_->registerHotKey(1, leftBracket, optionShift);
  (void)hotKeys_->registerHotKey(2, rightBracket, optionShift);
  world_->hotKeys().press({rightBracket, optionShift});
  EXPECT_THAT(pressed_, ElementsAre(2U));
  EXPECT_EQ(fake::lastHandlerStatus(), noErr);
}

TEST_F(CarbonEvents, ACombinationThatIsTakenCannotBeHad) {
  world_->hotKeys().setTaken({leftBracket, optionShift}, true);
  EXPECT_FALSE(hotKeys_->registerHotKey(1, leftBracket, optionShift));
}

TEST_F(CarbonEvents, ACombinationWithoutAReferenceCountsAsFailed) {
  system_.hotKeyAnswer = {.status = noErr, .makesReference = false};
  EXPECT_FALSE(hotKeys_->registerHotKey(1, leftBracket, optionShift));
  system_.hotKeyAnswer = {.status = eventHotKeyInvalidErr, .makesReference = false};
  EXPECT_FALSE(hotKeys_->registerHotKey(1, leftBracket, optionShift));
}

TEST_F(CarbonEvents, ACombinationGivenBackIsSilent) {
  const auto handler = listen();
  const auto reference = hotKeys_->registerHotKey(1, leftBracket, optionShift);
  ASSERT_TRUE(reference);
  hotKeys_->unregisterHotKey(*reference);
  world_->hotKeys().press({leftBracket, optionShift});
  EXPECT_TRUE(pressed_.empty());
  EXPECT_EQ(fake::registeredHotKeys(), 0U);
}

TEST_F(CarbonEvents, GivingACombinationBackTwiceDoesNothing) {
  const auto reference = hotKeys_->registerHotKey(1, leftBracket, optionShift);
  ASSERT_TRUE(reference);
  hotKeys_->unregisterHotKey(*reference);
  hotKeys_->unregisterHotKey(*reference);
}

TEST_F(CarbonEvents, AnEventThatCannotBeReadIsReportedHandled) {
  const auto handler = listen();
  fake::sendHotKeyEvent(1, hotKeySignature, eventHotKeyInvalidErr);
  EXPECT_EQ(fake::lastHandlerStatus(), noErr);
  fake::sendHotKeyEvent(1, hotKeySignature, noErr, false);
  EXPECT_EQ(fake::lastHandlerStatus(), noErr);
  EXPECT_TRUE(pressed_.empty());
}

TEST_F(CarbonEvents, TheSignatureOfAnEventIsNotCompared) {
  const auto handler = listen();
  fake::sendHotKeyEvent(4, otherSignature);
  EXPECT_THAT(pressed_, ElementsAre(4U));
}

TEST_F(CarbonEvents, AHandlerThatIsRefusedIsNone) {
  system_.handlerInstallation = eventNotHandledErr;
  EXPECT_FALSE(hotKeys_->installHandler([](std::uint32_t) {}));
}

TEST_F(CarbonEvents, TheHandlerMayRemoveItself) {
  std::optional<Subscription> handler;
  handler = hotKeys_->installHandler([&](std::uint32_t id) {
    handler.reset();
    pressed_.push_back(id);
  });
  (void)hotKeys_->registerHotKey(1, leftBracket, optionShift);
  world_->hotKeys().press({leftBracket, optionShift});
  world_->hotKeys().press({leftBracket, optionShift});
  EXPECT_THAT(pressed_, ElementsAre(1U));
}

TEST_F(CarbonEvents, APressThatIsTakenDoesNotReachTheHandler) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> taken;
  hotKeys_ = std::make_unique<CarbonHotKeys>([&](std::uint32_t keyCode, std::uint32_t modifiers) {
    taken.emplace_back(keyCode, modifiers);
    return keyCode == leftBracket;
  });
  const auto handler = listen();
  (void)hotKeys_->registerHotKey(1, leftBracket, optionShift);
  (void)hotKeys_->registerHotKey(2, rightBracket, optionShift);
  world_->hotKeys().press({leftBracket, optionShift});
  world_->hotKeys().press({rightBracket, optionShift});
  EXPECT_THAT(pressed_, ElementsAre(2U));
  EXPECT_THAT(taken, ElementsAre(std::pair(leftBracket, optionShift), std::pair(rightBracket, optionShift)));
}

}  // namespace
}  // namespace tilora::macos
