// The stored form of the remembered placements.
#include "tiling/preferences_json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/named_case.h"

namespace tilora {
namespace {

using testing::IsEmpty;
using testing::Optional;
using testing::Pair;
using testing::UnorderedElementsAre;
using enum WindowPlacement;

TEST(StoredPreferences, AreOneObjectFromPlacementKeyToPlacement) {
  EXPECT_EQ(encodePreferences({{"app||title:notes", left}}), R"({"app||title:notes":"left"})");
  EXPECT_EQ(encodePreferences({{"b", floatCenter}, {"a", full}, {"c", right}}), R"({"a":"full","b":"floatCenter","c":"right"})");
  EXPECT_EQ(encodePreferences({}), "{}");
}

TEST(StoredPreferences, AreReadBackWhateverTheTitles) {
  const PlacementPreferences preferences = {{R"(app||title:"quoted\")", left},
                                            {"app||title:übersicht メモ 🙂", right},
                                            {"app||title:line\nbreak\ttab", full},
                                            {std::string("app||title:nul\0byte", 19), left},
                                            {"", floatCenter}};

  EXPECT_EQ(decodePreferences(encodePreferences(preferences)), preferences);
}

TEST(StoredPreferences, OfATitleThatIsNotTextAreRepaired) {
  const PlacementPreferences preferences = {{"app||title:\xFF\xC0\xAF", left}, {"app||title:torn \xE3\x80", right}, {"\xED\xA0\x80", full}};

  const auto stored = decodePreferences(encodePreferences(preferences));

  ASSERT_TRUE(stored.has_value());
  EXPECT_EQ(stored->size(), 3);
  EXPECT_EQ(stored->at("app||title:torn \uFFFD"), right);
}

TEST(StoredPreferences, AreReadInAnyOrderAndLayout) {
  EXPECT_THAT(decodePreferences(" { \"b\" : \"right\" ,\n \"a\":\"left\" } \n"),
              Optional(UnorderedElementsAre(Pair("a", left), Pair("b", right))));
  EXPECT_THAT(decodePreferences(R"({"app||\u00fc":"full"})"), Optional(UnorderedElementsAre(Pair("app||ü", full))));
  EXPECT_THAT(decodePreferences("{}"), Optional(IsEmpty()));
}

struct BrokenCase {
  std::string name;
  std::string json;
};

class BrokenPreferences : public testing::TestWithParam<BrokenCase> {};

TEST_P(BrokenPreferences, CannotBeRead) { EXPECT_EQ(decodePreferences(GetParam().json), std::nullopt); }

INSTANTIATE_TEST_SUITE_P(
    Texts, BrokenPreferences,
    testing::Values(BrokenCase{"Nothing", ""}, BrokenCase{"Words", "left"}, BrokenCase{"Array", R"(["left"])"},
                    BrokenCase{"Text", R"("left")"}, BrokenCase{"Null", "null"}, BrokenCase{"UnknownPlacement", R"({"a":"top"})"},
                    BrokenCase{"OneUnknownPlacementOfTwo", R"({"a":"left","b":"top"})"}, BrokenCase{"OtherCapitals", R"({"a":"Left"})"},
                    BrokenCase{"NumberForAPlacement", R"({"a":1})"}, BrokenCase{"NullForAPlacement", R"({"a":null})"},
                    BrokenCase{"ObjectForAPlacement", R"({"a":{}})"}, BrokenCase{"TornOff", R"({"a":"left")"},
                    BrokenCase{"TextAfterTheObject", R"({"a":"left"} x)"}, BrokenCase{"TwoObjects", R"({"a":"left"}{"b":"left"})"},
                    BrokenCase{"TrailingComma", R"({"a":"left",})"}, BrokenCase{"Comment", R"({"a":"left"}/* */)"},
                    BrokenCase{"NulAfterTheObject", std::string("{\"a\":\"left\"}\0", 13)},
                    BrokenCase{"InvalidBytes", "{\"\xFF\":\"left\"}"}, BrokenCase{"HalfASurrogate", R"({"\ud800":"left"})"},
                    BrokenCase{"HugeNumber", R"({"a":1e999})"}, BrokenCase{"DeepNesting", std::string(100'000, '[')}),
    test::caseName);

}  // namespace
}  // namespace tilora
