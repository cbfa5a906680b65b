// The pointer's buttons as the drag guard asks for them.
#include "platform/x11/pointer.h"

#include <gtest/gtest.h>

#include <array>

#include "bare_server.h"
#include "platform/x11/hot_keys.h"

namespace tilora::x11 {
namespace {

constexpr std::uint64_t primary = 1;
constexpr std::uint64_t secondary = 2;
constexpr std::uint64_t middle = 4;

class PointerTest : public testing::Test {
 public:
  BareServer bare;
  X11KeyMonitor monitor;
  X11HotKeys hotKeys{*bare.connection, monitor};
  X11Pointer pointer{*bare.connection, hotKeys};

  std::uint64_t pressed() {
    bare.display.sync();
    return pointer.pressedButtons();
  }
  /// What the second question finds: the first one may still tell of a button that was let go.
  std::uint64_t settled() {
    pressed();
    return pressed();
  }
};

TEST_F(PointerTest, EachButtonHasItsBitWhileItIsHeld) {
  EXPECT_EQ(pressed(), 0U);
  bare.mouse.press(1);
  EXPECT_EQ(pressed(), primary);
  bare.mouse.press(3);
  EXPECT_EQ(pressed(), primary | secondary);
  bare.mouse.release(1);
  EXPECT_EQ(pressed(), secondary);
  bare.mouse.release(3);
  bare.mouse.press(2);
  EXPECT_EQ(pressed(), middle);
  bare.mouse.release(2);
  EXPECT_EQ(settled(), 0U);
}

TEST_F(PointerTest, AReleaseCountsFromTheSecondQuestionSoThatTheWindowManagerCanTellWhereItLeftTheWindow) {
  bare.mouse.press(1);
  EXPECT_EQ(pressed(), primary);
  EXPECT_EQ(pressed(), primary);
  bare.mouse.release(1);
  EXPECT_EQ(pressed(), primary);
  EXPECT_EQ(pressed(), 0U);
  EXPECT_EQ(pressed(), 0U);
}

TEST_F(PointerTest, WhatAnEventKnowsOfTheButtonsHoldsAtOnce) {
  bare.mouse.press(1);
  EXPECT_EQ(pressed(), primary);
  pointer.setKnownState(std::uint16_t{0});
  EXPECT_EQ(pressed(), 0U);
  pointer.setKnownState(XCB_BUTTON_MASK_1);
  EXPECT_EQ(pressed(), primary);
}

TEST_F(PointerTest, AltOrSuperWithAnotherButtonIsADrag) {
  for (const auto modifier : {harness::Key::leftAlt, harness::Key::leftSuper}) {
    bare.keyboard.press(modifier);
    EXPECT_EQ(settled(), 0U);
    bare.mouse.press(3);
    EXPECT_EQ(pressed(), primary | secondary);
    bare.mouse.release(3);
    bare.mouse.press(2);
    EXPECT_EQ(pressed(), primary | middle);
    bare.mouse.release(2);
    bare.keyboard.release(modifier);
  }
}

TEST_F(PointerTest, OtherModifiersAndTheWheelAreNoDrag) {
  bare.keyboard.press(harness::Key::leftShift);
  bare.mouse.press(3);
  EXPECT_EQ(pressed(), secondary);
  bare.mouse.release(3);
  bare.keyboard.release(harness::Key::leftShift);
  bare.keyboard.press(harness::Key::leftAlt);
  bare.mouse.press(4);
  EXPECT_EQ(settled(), 0U);
}

TEST_F(PointerTest, ALeftHandedMouseHasItsPrimaryButtonOnTheRight) {
  constexpr std::array<std::uint8_t, 3> swapped = {3, 2, 1};
  const auto current = xcb_get_pointer_mapping(bare.display.xcb());
  const Reply<xcb_get_pointer_mapping_reply_t> mapping{xcb_get_pointer_mapping_reply(bare.display.xcb(), current, nullptr)};
  ASSERT_TRUE(mapping);
  std::vector<std::uint8_t> buttons(xcb_get_pointer_mapping_map(mapping.get()),
                                    xcb_get_pointer_mapping_map(mapping.get()) + xcb_get_pointer_mapping_map_length(mapping.get()));
  std::copy(swapped.begin(), swapped.end(), buttons.begin());
  const auto cookie = xcb_set_pointer_mapping(bare.display.xcb(), static_cast<std::uint8_t>(buttons.size()), buttons.data());
  const Reply<xcb_set_pointer_mapping_reply_t> set{xcb_set_pointer_mapping_reply(bare.display.xcb(), cookie, nullptr)};
  ASSERT_TRUE(set);
  bare.mouse.press(3);
  EXPECT_EQ(pressed(), primary);
}

TEST_F(PointerTest, ADeadServerHoldsNoButton) {
  bare.mouse.press(1);
  EXPECT_EQ(pressed(), primary);
  bare.server.process().terminate();
  EXPECT_EQ(pointer.pressedButtons(), 0U);
}

}  // namespace
}  // namespace tilora::x11
