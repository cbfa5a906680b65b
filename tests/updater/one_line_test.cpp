// What is shown of a stranger's text.
#include "updater/one_line.h"

#include <gtest/gtest.h>

#include "support/named_case.h"

namespace tilora::updater {
namespace {

using namespace std::string_literals;

struct LineCase {
  std::string name;
  std::string text;
  std::string line;
};

class LineOf : public testing::TestWithParam<LineCase> {};

TEST_P(LineOf, HasNothingButCharactersThatAreSeen) { EXPECT_EQ(oneLine(GetParam().text, 8), GetParam().line); }

INSTANTIATE_TEST_SUITE_P(
    Text, LineOf,
    testing::Values(LineCase{"empty", "", ""}, LineCase{"plain", "1.10", "1.10"}, LineCase{"longest", "12345678", "12345678"},
                    LineCase{"too_long", "123456789", "12345678…"}, LineCase{"characters_not_bytes", "éééééééé", "éééééééé"},
                    LineCase{"four_bytes", "a😀b", "a😀b"}, LineCase{"breaks", "a\r\nb\t\v", "a��b��"}, LineCase{"null", "a\0b"s, "a�b"},
                    LineCase{"escape", "\x1b[2J", "�[2J"}, LineCase{"control_of_latin_1", "a\xC2\x9B", "a�"},
                    LineCase{"delete", "\x7f", "�"}, LineCase{"turned", "1\u202E2\u2067\u200F\u061C", "1�2���"},
                    LineCase{"separators", "\u2028\u2029", "��"}, LineCase{"stray_byte", "\x80x", "�x"},
                    LineCase{"cut_off", "x\xE2\x82", "x��"}, LineCase{"overlong", "\xC0\xAF", "��"},
                    LineCase{"overlong_in_three", "\xE0\x82\x9B", "���"}, LineCase{"overlong_in_four", "\xF0\x80\x80\xAF", "����"},
                    LineCase{"surrogate", "\xED\xA0\x80", "���"}, LineCase{"after_the_last", "\xF4\x90\x80\x80", "����"},
                    LineCase{"last", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"}, LineCase{"broken_inside", "\xE2(x", "�(x"},
                    LineCase{"beyond_unicode", "\xF5x", "�x"}),
    test::caseName);

}  // namespace
}  // namespace tilora::updater
