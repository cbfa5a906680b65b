// Positions and modifiers as the server's keyboard map gives them.
#include "platform/x11/keymap.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "bare_server.h"

namespace tilora::x11 {
namespace {

constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;

TEST(KeyNames, ACodeNamesAPositionOnTheKeyboard) {
  const std::map<std::uint32_t, std::string> known = {{33, "AD11"}, {30, "AD12"}, {49, "SPCE"}, {38, "AC07"}, {0, "AC01"},
                                                      {50, "TLDE"}, {10, "LSGT"}, {36, "RTRN"}, {53, "ESC"},  {126, "UP"}};
  for (const auto& [code, name] : known) EXPECT_EQ(keyNameForKeyCode(code), name) << code;
}

TEST(KeyNames, ACodeWithoutAPositionHasNoName) {
  for (const std::uint32_t code : {52U, 63U, 66U, 127U, 128U, 255U, 256U + 33U, 0xFFFFFFFFU})
    EXPECT_EQ(keyNameForKeyCode(code), "") << code;
}

TEST(KeyNames, NoPositionHasTwoCodes) {
  std::set<std::string_view> names;
  for (std::uint32_t code = 0; code < 256; ++code) {
    if (const auto name = keyNameForKeyCode(code); !name.empty()) {
      EXPECT_TRUE(names.insert(name).second) << name;
    }
  }
  EXPECT_GT(names.size(), 100U);
}

TEST(EmptyKeymap, HasNoKeysAndNoAltAndNoSuper) {
  const Keymap keymap;
  EXPECT_FALSE(keymap.keycode(33));
  EXPECT_FALSE(keymap.keyCode(34));
  EXPECT_FALSE(keymap.keyCode(0));
  EXPECT_FALSE(keymap.modifiers(option));
  EXPECT_FALSE(keymap.modifiers(command));
  EXPECT_EQ(keymap.modifiers(shift | control), XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL);
  EXPECT_EQ(keymap.lockStates(), (std::vector<std::uint16_t>{0, XCB_MOD_MASK_LOCK}));
}

class KeymapTest : public testing::Test {
 public:
  BareServer bare;
  Keymap read() const { return Keymap::read(*bare.connection); }
};

TEST_F(KeymapTest, EachPositionHasItsKeycode) {
  const Keymap keymap = read();
  EXPECT_EQ(keymap.keycode(33), 34);
  EXPECT_EQ(keymap.keycode(30), 35);
  EXPECT_EQ(keymap.keycode(49), 65);
  EXPECT_EQ(keymap.keycode(38), 44);
  EXPECT_FALSE(keymap.keycode(127));
  EXPECT_FALSE(keymap.keycode(0xFFFFFFFFU));
}

TEST_F(KeymapTest, AKeycodeLeadsBackToItsPosition) {
  const Keymap keymap = read();
  int found = 0;
  for (std::uint32_t code = 0; code < 128; ++code) {
    const auto keycode = keymap.keycode(code);
    if (!keycode) continue;
    ++found;
    EXPECT_EQ(keymap.keyCode(*keycode), code);
  }
  EXPECT_GT(found, 90);
  EXPECT_FALSE(keymap.keyCode(0));
}

TEST_F(KeymapTest, PositionsDoNotDependOnTheLayout) {
  const Keymap english = read();
  for (const std::string layout : {"de", "ru", "fr", "us(dvorak)", "jp"}) {
    ASSERT_TRUE(bare.setLayout({layout}));
    const Keymap other = read();
    for (const std::uint32_t code : {33U, 30U, 49U, 38U}) EXPECT_EQ(other.keycode(code), english.keycode(code)) << layout << ' ' << code;
  }
}

TEST_F(KeymapTest, ModifiersAreTheRealOnesOfTheKeyboard) {
  const Keymap keymap = read();
  EXPECT_EQ(keymap.modifiers(0), 0);
  EXPECT_EQ(keymap.modifiers(shift), XCB_MOD_MASK_SHIFT);
  EXPECT_EQ(keymap.modifiers(control), XCB_MOD_MASK_CONTROL);
  EXPECT_EQ(keymap.modifiers(option), XCB_MOD_MASK_1);
  EXPECT_EQ(keymap.modifiers(command), XCB_MOD_MASK_4);
  EXPECT_EQ(keymap.modifiers(option | shift), XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT);
  EXPECT_FALSE(keymap.modifiers(0x400)) << "Caps Lock is no part of a combination";
  EXPECT_FALSE(keymap.modifiers(0x80000000U));
}

TEST_F(KeymapTest, AltAndSuperAreFoundWhereTheMapPutsThem) {
  ASSERT_TRUE(bare.setLayout({"us", "-option", "altwin:swap_alt_win"}));
  const Keymap keymap = read();
  EXPECT_NE(keymap.alt(), 0);
  EXPECT_NE(keymap.super(), 0);
  EXPECT_NE(keymap.alt(), keymap.super());
}

TEST_F(KeymapTest, TheLocksCanBeInFourStates) {
  const std::vector<std::uint16_t> states = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
  EXPECT_EQ(read().lockStates(), states);
}

TEST_F(KeymapTest, AKeyEventSaysPositionAndModifiers) {
  const Keymap keymap = read();
  const auto event = keymap.keyEvent(34, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1);
  ASSERT_TRUE(event);
  EXPECT_EQ(event->keyCode, 33U);
  EXPECT_EQ(event->flags, (1U << 17U) | (1U << 19U));
  EXPECT_EQ(keymap.keyEvent(34, XCB_MOD_MASK_LOCK)->flags, 1U << 16U);
  EXPECT_EQ(keymap.keyEvent(34, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4)->flags, (1U << 18U) | (1U << 20U));
  constexpr std::uint16_t numLockAndThirdGroup = XCB_MOD_MASK_2 | 0x4000;
  EXPECT_EQ(keymap.keyEvent(34, numLockAndThirdGroup)->flags, 0U);
  EXPECT_FALSE(keymap.keyEvent(0, 0));
  EXPECT_FALSE(keymap.keyEvent(255, 0));
}

TEST_F(KeymapTest, ADeadServerGivesAnEmptyMap) {
  bare.server.process().terminate();
  EXPECT_EQ(read(), Keymap());
}

}  // namespace
}  // namespace tilora::x11
