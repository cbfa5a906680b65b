// What the menu shows and what its rows do.
#include "controller/menu_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "controller/session.h"

namespace tilora {
namespace {

using namespace std::chrono_literals;
using simulated::moved;
using simulated::resized;
using test::Session;
using testing::ElementsAre;
using testing::IsEmpty;

using Text = std::optional<std::string>;

TEST(MenuHeader, PrefersTheDisplayNameAndTheShortVersion) {
  EXPECT_EQ(menuHeader("Tilora Beta", "tilora", "1.2", "45"), "Tilora Beta 1.2");
  EXPECT_EQ(menuHeader(Text(), "tilora", Text(), "45"), "tilora 45");
  EXPECT_EQ(menuHeader(Text(), Text(), "1.2", "45"), "Tilora 1.2");
}

TEST(MenuHeader, WithoutAVersionIsTheNameAlone) {
  EXPECT_EQ(menuHeader(Text(), Text(), Text(), Text()), "Tilora");
  EXPECT_EQ(menuHeader("Tilora", Text(), "", "45"), "Tilora");
}

TEST(GapLabel, IsTruncatedTowardZero) {
  EXPECT_EQ(gapLabel(8), "8 px gap");
  EXPECT_EQ(gapLabel(7.9), "7 px gap");
  EXPECT_EQ(gapLabel(0), "0 px gap");
}

class Menu : public testing::Test {
 protected:
  Menu() { session_.effects(); }

  std::vector<simulated::Effect> click(int row) {
    return session_.effectsOf([&] { menu_.click(row); });
  }
  WindowPlacement placement() { return session_.controller().windowPlacements().at({100, 1}); }

  Session session_{test::tiledLaptop().app(100).window(1).front(100, 1)};
  int settingsOpened_ = 0;
  MenuModel menu_{session_.controller(), [this] { ++settingsOpened_; }};
};

TEST_F(Menu, HasSixRows) {
  const auto rows = menu_.rows();
  const auto expect = [&](std::size_t index, const char* title, const char* subtitle, const char* symbol, const char* shortcut) {
    EXPECT_EQ(rows.at(index).title, title);
    EXPECT_EQ(rows.at(index).subtitle, subtitle);
    EXPECT_EQ(rows.at(index).symbol, symbol);
    EXPECT_EQ(rows.at(index).shortcut, shortcut);
  };

  expect(0, "Settings", "Adjust behavior and shortcuts", "slider.horizontal.3", "Cmd+,");
  expect(1, "Retile Windows", "Refresh positions immediately", "arrow.triangle.2.circlepath", "");
  expect(2, "Focused Window Left", "Tile focused window to left", "square.lefthalf.filled", "Option+Shift+[");
  expect(3, "Focused Window Right", "Tile focused window to right", "square.righthalf.filled", "Option+Shift+]");
  expect(4, "Center Floating / Fullscreen", "Center fixed windows or fill", "rectangle.inset.filled", "Option+Shift+Space");
  expect(5, "Float Window Centered", "Resize to 60% width, 90% height and center", "rectangle.center.inset.filled", "Option+Shift+J");
}

TEST_F(Menu, ShowsTheBindingsAsTheyAreNow) {
  session_.controller().setBinding({123, 0x1800}, ShortcutAction::moveRight);
  session_.controller().setBinding({40, 0}, ShortcutAction::floatCenter);

  EXPECT_EQ(menu_.rows().at(3).shortcut, "Ctrl+Option+Left");
  EXPECT_EQ(menu_.rows().at(5).shortcut, "K");
}

TEST_F(Menu, TheFirstRowOpensTheSettingsAndRaisesThemThreeTimes) {
  const auto settings = std::make_shared<simulated::SimulatedOwnWindow>("Settings");
  session_.desktop().shell().windows.push_back(settings);

  click(1);
  session_.advance(1000ms);

  EXPECT_EQ(settingsOpened_, 1);
  EXPECT_EQ(settings->timesMadeKey, 3);
}

TEST_F(Menu, TheSecondRowMakesAPassAtOnce) { EXPECT_THAT(click(2), ElementsAre(moved(1, 10, 35), resized(1, 1420, 855))); }

TEST_F(Menu, TheSecondRowChecksTrustAnew) {
  session_.desktop().trust().trusted = false;
  EXPECT_THAT(click(2), IsEmpty());
  session_.desktop().trust().trusted = true;
  EXPECT_THAT(click(2), testing::SizeIs(2));
}

TEST_F(Menu, TheOtherRowsPlaceTheFocusedWindow) {
  click(3);
  EXPECT_EQ(placement(), WindowPlacement::left);
  click(4);
  EXPECT_EQ(placement(), WindowPlacement::right);
  click(5);
  EXPECT_EQ(placement(), WindowPlacement::full);
  click(6);
  EXPECT_EQ(placement(), WindowPlacement::floatCenter);
}

TEST_F(Menu, OtherRowsDoNotExist) {
  for (const int row : {-1, 0, 7}) EXPECT_THAT(click(row), IsEmpty());
}

TEST_F(Menu, TheCardThatAsksForAccessIsThereWhileItIsMissing) {
  EXPECT_TRUE(menu_.showsPermissionCard());
  session_.advance(250ms);
  EXPECT_FALSE(menu_.showsPermissionCard());
}

TEST_F(Menu, TheGapIsTheControllers) {
  session_.controller().setWindowPadding(7.9);
  EXPECT_EQ(menu_.gap(), "7 px gap");
}

}  // namespace
}  // namespace tilora
