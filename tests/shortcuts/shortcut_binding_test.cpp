// The four commands, their key combinations, and which combinations are free.
#include "shortcuts/shortcut_binding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/named_case.h"

namespace tilora {
namespace {

using testing::ElementsAre;
using enum ShortcutAction;

TEST(ShortcutActions, AreFourInThisOrder) {
  EXPECT_THAT(allShortcutActions, ElementsAre(moveLeft, moveRight, centerOrFullscreen, floatCenter));
}

TEST(ShortcutActions, HaveTheirNamesAsIds) {
  EXPECT_EQ(id(moveLeft), "moveLeft");
  EXPECT_EQ(id(moveRight), "moveRight");
  EXPECT_EQ(id(centerOrFullscreen), "centerOrFullscreen");
  EXPECT_EQ(id(floatCenter), "floatCenter");
  for (const auto action : allShortcutActions) EXPECT_EQ(shortcutActionNamed(id(action)), action);
  for (const auto* other : {"", "MoveLeft", "left", "moveLeft "}) EXPECT_EQ(shortcutActionNamed(other), std::nullopt) << other;
}

TEST(ShortcutBindings, AreOptionAndShiftWithBracketsSpaceAndJByDefault) {
  const ShortcutBindings defaults;

  EXPECT_EQ(defaults.moveLeft, (ShortcutBinding{33, 0xA00}));
  EXPECT_EQ(defaults.moveRight, (ShortcutBinding{30, 0xA00}));
  EXPECT_EQ(defaults.centerOrFullscreen, (ShortcutBinding{49, 0xA00}));
  EXPECT_EQ(defaults.floatCenter, (ShortcutBinding{38, 0xA00}));
}

TEST(ShortcutBindings, AreFoundByTheirAction) {
  ShortcutBindings bindings;
  bindings[moveRight] = {1, 2};

  EXPECT_EQ(bindings.moveRight, (ShortcutBinding{1, 2}));
  EXPECT_EQ(bindings[moveLeft], bindings.moveLeft);
  EXPECT_EQ(bindings[centerOrFullscreen], bindings.centerOrFullscreen);
  EXPECT_EQ(bindings[floatCenter], bindings.floatCenter);
}

TEST(ABinding, IsInUseWhenAnotherActionHasKeyAndModifiers) {
  const ShortcutBindings bindings;

  for (const auto holder : allShortcutActions) {
    for (const auto excluded : allShortcutActions) {
      EXPECT_EQ(isBindingInUse(bindings, bindings[holder], excluded), holder != excluded) << id(holder) << " without " << id(excluded);
    }
  }
  EXPECT_FALSE(isBindingInUse(bindings, {33, 0xB00}, moveRight));
  EXPECT_FALSE(isBindingInUse(bindings, {34, 0xA00}, moveRight));
}

TEST(ABinding, ThatTwoActionsShareIsInUseForEither) {
  ShortcutBindings bindings;
  bindings.moveRight = bindings.moveLeft;

  EXPECT_TRUE(isBindingInUse(bindings, bindings.moveLeft, moveLeft));
  EXPECT_TRUE(isBindingInUse(bindings, bindings.moveLeft, moveRight));
}

struct FlagsCase {
  std::string name;
  std::uint64_t flags;
  std::uint32_t mask;
};

class ModifierMask : public testing::TestWithParam<FlagsCase> {};

TEST_P(ModifierMask, HasTheFourModifiersAndNothingElse) { EXPECT_EQ(modifierMask(GetParam().flags), GetParam().mask); }

INSTANTIATE_TEST_SUITE_P(EventFlags, ModifierMask,
                         testing::Values(FlagsCase{"None", 0, 0}, FlagsCase{"Shift", 1U << 17, 0x200},
                                         FlagsCase{"Control", 1U << 18, 0x1000}, FlagsCase{"Option", 1U << 19, 0x800},
                                         FlagsCase{"Command", 1U << 20, 0x100}, FlagsCase{"CapsLock", 1U << 16, 0},
                                         FlagsCase{"ShiftAndCapsLock", (1U << 17) | (1U << 16), 0x200}, FlagsCase{"Function", 1U << 23, 0},
                                         FlagsCase{"DeviceDependentBits", 0xFFFF, 0}, FlagsCase{"AllFour", 0xFU << 17, 0x1B00},
                                         FlagsCase{"Everything", ~std::uint64_t{0}, 0x1B00}),
                         test::caseName);

}  // namespace
}  // namespace tilora
