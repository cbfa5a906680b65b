// How key combinations are shown.
#include "shortcuts/binding_text.h"

#include <gtest/gtest.h>

#include <map>

namespace tilora {
namespace {

TEST(ModifierText, NamesTheModifiersInAFixedOrder) {
  EXPECT_EQ(modifierText(0), "");
  EXPECT_EQ(modifierText(0x1000), "Ctrl+");
  EXPECT_EQ(modifierText(0x800), "Option+");
  EXPECT_EQ(modifierText(0x200), "Shift+");
  EXPECT_EQ(modifierText(0x100), "Cmd+");
  EXPECT_EQ(modifierText(0x1900), "Ctrl+Option+Cmd+");
  EXPECT_EQ(modifierText(0x1B00), "Ctrl+Option+Shift+Cmd+");
  EXPECT_EQ(modifierText(0xFFFFE4FF), "");
}

const std::map<std::uint32_t, std::string> namedKeys = {
    {0, "A"},
    {1, "S"},
    {2, "D"},
    {3, "F"},
    {4, "H"},
    {5, "G"},
    {6, "Z"},
    {7, "X"},
    {8, "C"},
    {9, "V"},
    {11, "B"},
    {12, "Q"},
    {13, "W"},
    {14, "E"},
    {15, "R"},
    {16, "Y"},
    {17, "T"},
    {18, "1"},
    {19, "2"},
    {20, "3"},
    {21, "4"},
    {22, "6"},
    {23, "5"},
    {24, "="},
    {25, "9"},
    {26, "7"},
    {27, "-"},
    {28, "8"},
    {29, "0"},
    {30, "]"},
    {31, "O"},
    {32, "U"},
    {33, "["},
    {34, "I"},
    {35, "P"},
    {36, "Return"},
    {37, "L"},
    {38, "J"},
    {39, "'"},
    {40, "K"},
    {41, ";"},
    {42, "\\"},
    {43, ","},
    {44, "/"},
    {45, "N"},
    {46, "M"},
    {47, "."},
    {48, "Tab"},
    {49, "Space"},
    {50, "`"},
    {51, "Delete"},
    {53, "Esc"},
    {117, "Forward Delete"},
    {123, "Left"},
    {124, "Right"},
    {125, "Down"},
    {126, "Up"},
};

TEST(KeyNames, AreThoseOfTheKeyboardOrTheCode) {
  for (std::uint32_t code = 0; code < 512; ++code) {
    const auto named = namedKeys.find(code);
    EXPECT_EQ(keyName(code), named != namedKeys.end() ? named->second : "Key " + std::to_string(code));
  }
  EXPECT_EQ(keyName(4294967295U), "Key 4294967295");
}

TEST(BindingText, IsTheModifiersFollowedByTheKey) {
  EXPECT_EQ(bindingText({33, 0xA00}), "Option+Shift+[");
  EXPECT_EQ(bindingText({30, 0xA00}), "Option+Shift+]");
  EXPECT_EQ(bindingText({49, 0xA00}), "Option+Shift+Space");
  EXPECT_EQ(bindingText({38, 0xA00}), "Option+Shift+J");
  EXPECT_EQ(bindingText({123, 0x1800}), "Ctrl+Option+Left");
  EXPECT_EQ(bindingText({10, 0x100}), "Cmd+Key 10");
}

TEST(BindingText, WithoutModifiersIsTheKeyAlone) { EXPECT_EQ(bindingText({40, 0}), "K"); }

}  // namespace
}  // namespace tilora
