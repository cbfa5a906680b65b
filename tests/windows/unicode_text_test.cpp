// White space, lower case and containment after the rules of Unicode.
#include "windows/unicode_text.h"

#include <gtest/gtest.h>

#include <string>

#include "support/named_case.h"

namespace tilora {
namespace {

struct TextCase {
  std::string name;
  std::string text;
  std::string result;
};

class Trimming : public testing::TestWithParam<TextCase> {};

TEST_P(Trimming, TakesWhiteSpaceFromBothEnds) { EXPECT_EQ(trimmed(GetParam().text), GetParam().result); }

INSTANTIATE_TEST_SUITE_P(
    Texts, Trimming,
    testing::Values(TextCase{"Nothing", "", ""}, TextCase{"OnlySpaces", "   ", ""}, TextCase{"Plain", "Notes", "Notes"},
                    TextCase{"Spaces", "  My Notes ", "My Notes"}, TextCase{"AsciiControls", "\t\n\v\f\rNotes\r\n", "Notes"},
                    TextCase{"NoBreakSpace", "\u00A0Notes\u00A0", "Notes"}, TextCase{"NextLine", "\u0085Notes\u0085", "Notes"},
                    TextCase{"IdeographicSpace", "\u3000メモ\u3000", "メモ"}, TextCase{"LineSeparator", "\u2028 \u2029Notes", "Notes"},
                    TextCase{"NarrowAndThinSpaces", "\u2009\u202F\u205FNotes\u1680", "Notes"},
                    TextCase{"OnlyUnicodeSpaces", "\u3000\u00A0", ""}, TextCase{"AccentsStay", " é ", "é"},
                    TextCase{"InnerSpaceStays", "é\u3000é", "é\u3000é"}, TextCase{"InvalidBytesStay", " \xFF\xFE ", "\xFF\xFE"},
                    TextCase{"ATornCharacterStays", "Notes \xE3\x80", "Notes \xE3\x80"}),
    test::caseName);

class LowerCase : public testing::TestWithParam<TextCase> {};

TEST_P(LowerCase, FollowsNoLanguageInParticular) { EXPECT_EQ(lowerCased(GetParam().text), GetParam().result); }

INSTANTIATE_TEST_SUITE_P(Texts, LowerCase,
                         testing::Values(TextCase{"Nothing", "", ""}, TextCase{"Ascii", "AXWindow@[`{Z", "axwindow@[`{z"},
                                         TextCase{"Accents", "ÀÉÎ", "àéî"}, TextCase{"Greek", "ΔΕΛΤΑ", "δελτα"},
                                         TextCase{"Cyrillic", "ЖУК", "жук"}, TextCase{"Sharp", "Straße", "straße"},
                                         TextCase{"TurkishDottedI", "\u0130", "i\u0307"}, TextCase{"NoCase", "メモ", "メモ"},
                                         TextCase{"InvalidBytes", "A\xFF", "a\uFFFD"}),
                         test::caseName);

struct ContainmentCase {
  std::string name;
  std::string text;
  std::string part;
  bool isContained;
};

class Containment : public testing::TestWithParam<ContainmentCase> {};

TEST_P(Containment, PassesOverCase) { EXPECT_EQ(containsIgnoringCase(GetParam().text, GetParam().part), GetParam().isContained); }

INSTANTIATE_TEST_SUITE_P(Texts, Containment,
                         testing::Values(ContainmentCase{"Same", "settings", "settings", true},
                                         ContainmentCase{"Within", "Tilora Settings", "settings", true},
                                         ContainmentCase{"Capitals", "TILORA SETTINGS", "settings", true},
                                         ContainmentCase{"Accents", "RÉGLAGES", "réglages", true},
                                         ContainmentCase{"OneLetterMissing", "Tilora Setting", "settings", false},
                                         ContainmentCase{"NothingHasNoPart", "", "settings", false},
                                         ContainmentCase{"InvalidBytes", "\xFFSettings\xFF", "settings", true}),
                         test::caseName);

}  // namespace
}  // namespace tilora
