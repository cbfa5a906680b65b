// The stored form of the key combinations.
#include "shortcuts/binding_json.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/named_case.h"

namespace tilora {
namespace {

constexpr auto largest = std::numeric_limits<std::uint32_t>::max();

TEST(StoredBindings, AreFourObjectsInTheOrderOfTheActions) {
  const ShortcutBindings bindings = {{1, 256}, {2, 512}, {3, 2048}, {largest, 0}};

  EXPECT_EQ(encodeBindings(bindings),
            R"({"moveLeft":{"keyCode":1,"modifiers":256},"moveRight":{"keyCode":2,"modifiers":512},)"
            R"("centerOrFullscreen":{"keyCode":3,"modifiers":2048},"floatCenter":{"keyCode":4294967295,"modifiers":0}})");
}

TEST(StoredBindings, AreReadBack) {
  const ShortcutBindings bindings = {{1, 256}, {2, 512}, {largest, largest}, {0, 0}};

  EXPECT_EQ(decodeBindings(encodeBindings(bindings)), bindings);
  EXPECT_EQ(decodeBindings(encodeBindings({})), ShortcutBindings{});
}

/// The stored form with one of its parts replaced.
std::string stored(const std::string& moveLeftKeyCode, const std::string& floatCenter = R"("floatCenter":{"keyCode":4,"modifiers":4})") {
  return R"({"moveLeft":{"keyCode":)" + moveLeftKeyCode +
         R"(,"modifiers":1},"moveRight":{"keyCode":2,"modifiers":2},"centerOrFullscreen":{"keyCode":3,"modifiers":3},)" + floatCenter + "}";
}

TEST(StoredBindings, WithoutFloatCenterHaveItsDefault) {
  const ShortcutBindings expected = {{1, 1}, {2, 2}, {3, 3}, ShortcutBindings{}.floatCenter};

  EXPECT_EQ(decodeBindings(stored("1", R"("other":0)")), expected);
  EXPECT_EQ(decodeBindings(stored("1", R"("floatCenter":null)")), expected);
}

TEST(StoredBindings, MayHoldMoreThanIsAskedFor) {
  EXPECT_EQ(decodeBindings(stored("1", R"("floatCenter":{"modifiers":4,"keyCode":4,"name":"x"},"more":[])")),
            (ShortcutBindings{{1, 1}, {2, 2}, {3, 3}, {4, 4}}));
}

struct NumberCase {
  std::string name;
  std::string number;
  std::optional<std::uint32_t> keyCode;
};

class StoredKeyCode : public testing::TestWithParam<NumberCase> {};

TEST_P(StoredKeyCode, IsAWholeNumberOf32BitsHoweverItIsWritten) {
  const auto bindings = decodeBindings(stored(GetParam().number));

  EXPECT_EQ(bindings ? std::optional(bindings->moveLeft.keyCode) : std::nullopt, GetParam().keyCode);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, StoredKeyCode,
    testing::Values(NumberCase{"Whole", "33", 33}, NumberCase{"Zero", "0", 0}, NumberCase{"Largest", "4294967295", largest},
                    NumberCase{"WholeWithPoint", "33.0", 33}, NumberCase{"WholeWithExponent", "3.3e1", 33},
                    NumberCase{"LargestWithPoint", "4294967295.0", largest}, NumberCase{"Fraction", "33.5", std::nullopt},
                    NumberCase{"SmallFraction", "1e-9", std::nullopt}, NumberCase{"Negative", "-1", std::nullopt},
                    NumberCase{"NegativeWithPoint", "-33.0", std::nullopt}, NumberCase{"TooLarge", "4294967296", std::nullopt},
                    NumberCase{"TooLargeWithPoint", "4294967296.0", std::nullopt}, NumberCase{"JustTooLarge", "4294967295.5", std::nullopt},
                    NumberCase{"Beyond64Bits", "18446744073709551649", std::nullopt}, NumberCase{"BeyondADouble", "1e999", std::nullopt},
                    NumberCase{"True", "true", std::nullopt}, NumberCase{"Text", "\"33\"", std::nullopt},
                    NumberCase{"Null", "null", std::nullopt}, NumberCase{"Array", "[33]", std::nullopt},
                    NumberCase{"Hexadecimal", "0x21", std::nullopt}, NumberCase{"LeadingZero", "033", std::nullopt},
                    NumberCase{"NotANumber", "NaN", std::nullopt}),
    test::caseName);

struct BrokenCase {
  std::string name;
  std::string json;
};

class BrokenBindings : public testing::TestWithParam<BrokenCase> {};

TEST_P(BrokenBindings, CannotBeRead) { EXPECT_EQ(decodeBindings(GetParam().json), std::nullopt); }

const std::string threeBindings =
    R"("moveLeft":{"keyCode":1,"modifiers":1},"moveRight":{"keyCode":2,"modifiers":2},"centerOrFullscreen":{"keyCode":3,"modifiers":3})";

INSTANTIATE_TEST_SUITE_P(
    Texts, BrokenBindings,
    testing::Values(
        BrokenCase{"Nothing", ""}, BrokenCase{"Words", "Option+Shift+J"}, BrokenCase{"Array", "[]"}, BrokenCase{"EmptyObject", "{}"},
        BrokenCase{"WithoutMoveLeft", R"({"moveRight":{"keyCode":2,"modifiers":2},"centerOrFullscreen":{"keyCode":3,"modifiers":3}})"},
        BrokenCase{"WithoutMoveRight", R"({"moveLeft":{"keyCode":1,"modifiers":1},"centerOrFullscreen":{"keyCode":3,"modifiers":3}})"},
        BrokenCase{"WithoutCenterOrFullscreen", R"({"moveLeft":{"keyCode":1,"modifiers":1},"moveRight":{"keyCode":2,"modifiers":2}})"},
        BrokenCase{"NullForMoveRight",
                   R"({"moveLeft":{"keyCode":1,"modifiers":1},"moveRight":null,"centerOrFullscreen":{"keyCode":3,"modifiers":3}})"},
        BrokenCase{"WithoutKeyCode", "{" + threeBindings + R"(,"floatCenter":{"modifiers":4}})"},
        BrokenCase{"WithoutModifiers", "{" + threeBindings + R"(,"floatCenter":{"keyCode":4}})"},
        BrokenCase{"ModifiersAsText", "{" + threeBindings + R"(,"floatCenter":{"keyCode":4,"modifiers":"2560"}})"},
        BrokenCase{"NegativeModifiers", "{" + threeBindings + R"(,"floatCenter":{"keyCode":4,"modifiers":-1}})"},
        BrokenCase{"ArrayForABinding", "{" + threeBindings + R"(,"floatCenter":[4,4]})"},
        BrokenCase{"OtherCapitals", R"({"MoveLeft":{"keyCode":1,"modifiers":1}})"}, BrokenCase{"TornOff", "{" + threeBindings},
        BrokenCase{"TextAfterTheObject", "{" + threeBindings + "} x"}, BrokenCase{"TwoObjects", "{" + threeBindings + "}{}"},
        BrokenCase{"NulAfterTheObject", "{" + threeBindings + "}" + std::string(1, '\0')},
        BrokenCase{"InvalidBytes", "{" + threeBindings + ",\"x\":\"\xFF\"}"}, BrokenCase{"DeepNesting", std::string(100'000, '{')}),
    test::caseName);

TEST(StoredBindings, ThisFormOfThreeBindingsIsReadable) { EXPECT_TRUE(decodeBindings("{" + threeBindings + "}").has_value()); }

}  // namespace
}  // namespace tilora
