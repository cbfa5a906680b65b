// Where the menu opens.
#include "app/ui/menu_position.h"

#include <gtest/gtest.h>

namespace tilora::app {
namespace {

constexpr QSize menu = {420, 400};
constexpr QRect below = {0, 30, 1600, 870};
constexpr QRect above = {0, 0, 1600, 870};

TEST(MenuPosition, IsUnderAnIconAtTheTop) { EXPECT_EQ(menuPosition(menu, {800, 3, 24, 24}, {0, 27, 1600, 873}), QPoint(800, 27)); }

TEST(MenuPosition, IsAboveAnIconAtTheBottom) { EXPECT_EQ(menuPosition(menu, {800, 873, 24, 24}, above), QPoint(800, 470)); }

TEST(MenuPosition, StaysOutOfThePanel) { EXPECT_EQ(menuPosition(menu, {800, 3, 24, 24}, below).y(), 30); }

TEST(MenuPosition, StaysOnTheScreen) {
  EXPECT_EQ(menuPosition(menu, {1570, 0, 24, 30}, below), QPoint(1180, 30));
  EXPECT_EQ(menuPosition(menu, {-10, 0, 24, 30}, below), QPoint(0, 30));
}

TEST(MenuPosition, IsBesideAPanelAtTheSide) {
  EXPECT_EQ(menuPosition(menu, {0, 100, 40, 24}, {40, 0, 1560, 900}), QPoint(40, 124));
  EXPECT_EQ(menuPosition(menu, {1570, 100, 30, 24}, {0, 0, 1560, 900}), QPoint(1140, 124));
}

TEST(MenuPosition, BeginsAtTheTopWhenItDoesNotFit) { EXPECT_EQ(menuPosition(menu, {0, 290, 24, 10}, {0, 0, 300, 290}), QPoint(0, 0)); }

TEST(MenuPosition, WorksOnAScreenThatBeginsElsewhere) {
  EXPECT_EQ(menuPosition(menu, {3100, 500, 24, 24}, {1600, 524, 1500, 1000}), QPoint(2680, 524));
}

}  // namespace
}  // namespace tilora::app
