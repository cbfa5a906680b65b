// The modifier keys in the two forms that the system has for them.
#include "platform/macos/modifier_flags.h"

#include <gtest/gtest.h>

namespace tilora::macos {
namespace {

TEST(ModifierFlags, EachModifierOfCarbonHasItsFlag) {
  EXPECT_EQ(eventFlags(0), 0U);
  EXPECT_EQ(eventFlags(0x200), 0x20000U);
  EXPECT_EQ(eventFlags(0x1000), 0x40000U);
  EXPECT_EQ(eventFlags(0x800), 0x80000U);
  EXPECT_EQ(eventFlags(0x100), 0x100000U);
  EXPECT_EQ(eventFlags(0x1B00), 0x1E0000U);
}

TEST(ModifierFlags, OtherBitsHaveNone) { EXPECT_EQ(eventFlags(0x400), 0U); }

}  // namespace
}  // namespace tilora::macos
