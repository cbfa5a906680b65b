// How stored settings read as truth values and as numbers.
#include "platform/setting_value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tilora {
namespace {

TEST(SettingValue, ABoolReadsAsOneOrZero) {
  EXPECT_EQ(readAsNumber(true), 1);
  EXPECT_EQ(readAsNumber(false), 0);
}

TEST(SettingValue, ANumberIsTrueUnlessItIsZero) {
  EXPECT_TRUE(readAsBool(-0.5));
  EXPECT_FALSE(readAsBool(0.0));
}

TEST(SettingValue, DataAndDatesReadAsNothing) {
  EXPECT_FALSE(readAsBool(SettingData{"1"}));
  EXPECT_EQ(readAsNumber(SettingData{"1"}), 0);
  EXPECT_FALSE(readAsBool(SettingDate{}));
  EXPECT_EQ(readAsNumber(SettingDate{}), 0);
}

struct TextReading {
  std::string text;
  double number;
  bool truth;
};

class SettingText : public testing::TestWithParam<TextReading> {};

TEST_P(SettingText, ReadsAsTheNumberAndTheTruthValueItBeginsWith) {
  EXPECT_EQ(readAsNumber(GetParam().text), GetParam().number) << GetParam().text;
  EXPECT_EQ(readAsBool(GetParam().text), GetParam().truth) << GetParam().text;
}

constexpr double infinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(Texts, SettingText,
                         testing::Values(TextReading{"", 0, false}, TextReading{"12", 12, true}, TextReading{"12.5px", 12.5, true},
                                         TextReading{" \t\n7", 7, true}, TextReading{"\u00a0\u20097", 7, true}, TextReading{"-3", -3, true},
                                         TextReading{"+3", 3, true}, TextReading{"- 3", 0, false}, TextReading{".5", 0.5, false},
                                         TextReading{"5.", 5, true}, TextReading{".", 0, false}, TextReading{"1e3", 1000, true},
                                         TextReading{"1e", 1, true}, TextReading{"1e+x", 1, true}, TextReading{"2E-1", 0.2, true},
                                         TextReading{"0x10", 0, false}, TextReading{"inf", 0, false}, TextReading{"nan", 0, false},
                                         TextReading{"1,5", 1, true}, TextReading{"1e999", infinity, true},
                                         TextReading{"-1e999", -infinity, true}, TextReading{"1e-999", 0, true},
                                         TextReading{"0." + std::string(400, '0') + "1", 0, false},
                                         TextReading{std::string(400, '9'), infinity, true}, TextReading{"YES", 0, true},
                                         TextReading{" yes", 0, true}, TextReading{"true", 0, true}, TextReading{"-0001", -1, true},
                                         TextReading{"0000", 0, false}, TextReading{"no", 0, false},
                                         TextReading{"\xff"
                                                     "5",
                                                     0, false},
                                         TextReading{"000y", 0, true}));

}  // namespace
}  // namespace tilora
