// The screens of the system.
#include "platform/macos/screens.h"

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

class ScreensTest : public ObjectiveCTest {
 protected:
  MacScreens screens_;
};

TEST_F(ScreensTest, AScreenHasItsFrameVisiblePartAndNumber) {
  world_->screens().set(1, Screen{{-1920, 30, 1920, 1080}, {-1915, 70, 1910, 1015}, 0x1'0000'0002});
  const auto list = screens_.screens();
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0]->frame, (Rect{-1920, 30, 1920, 1080}));
  EXPECT_EQ(list[0]->visibleFrame, (Rect{-1915, 70, 1910, 1015}));
  EXPECT_EQ(list[0]->number, 0x1'0000'0002U);
}

TEST_F(ScreensTest, ScreensComeInTheOrderOfTheSystem) {
  world_->screens().set(2, Screen{{1440, 0, 800, 600}, {1440, 0, 800, 600}, 9});
  const auto list = screens_.screens();
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0]->number, 1U);
  EXPECT_EQ(list[1]->number, 9U);
}

TEST_F(ScreensTest, AScreenWithoutANumberHasNone) {
  world_->screens().set(1, Screen{{0, 0, 1440, 900}, {0, 0, 1440, 875}, std::nullopt});
  EXPECT_EQ(screens_.screens().at(0)->number, std::nullopt);
}

TEST_F(ScreensTest, ANumberThatIsNoNumberIsNone) {
  system_.appKit.describesScreensOddly = true;
  EXPECT_EQ(screens_.screens().at(0)->number, std::nullopt);
}

TEST_F(ScreensTest, AScreenThatChangedIsAnotherObject) {
  const auto before = screens_.screens().at(0);
  EXPECT_EQ(screens_.screens().at(0), before);
  world_->screens().set(1, Screen{{0, 0, 1440, 900}, {0, 60, 1440, 815}, 1});
  const auto after = screens_.screens().at(0);
  EXPECT_NE(after, before);
  EXPECT_EQ(after->visibleFrame, (Rect{0, 60, 1440, 815}));
}

TEST_F(ScreensTest, TheMainScreenIsOneOfTheList) {
  world_->screens().set(2, Screen{{1440, 0, 800, 600}, {1440, 0, 800, 600}, 9});
  world_->screens().setMain(2);
  const auto list = screens_.screens();
  EXPECT_EQ(screens_.mainScreen(), list.at(1));
}

TEST_F(ScreensTest, ThereMayBeNoMainScreenAndNoneAtAll) {
  world_->screens().remove(1);
  EXPECT_TRUE(screens_.screens().empty());
  EXPECT_EQ(screens_.mainScreen(), nullptr);
}

TEST_F(ScreensTest, ScreensRearrangedBetweenTwoCallsAreReadAnew) {
  (void)screens_.screens();
  world_->screens().remove(1);
  world_->screens().set(3, Screen{{0, 0, 2560, 1440}, {0, 0, 2560, 1415}, 3});
  const auto main = screens_.mainScreen();
  ASSERT_TRUE(main);
  EXPECT_EQ(main->number, 3U);
}

}  // namespace
}  // namespace tilora::macos
