// What a feed has to be.
#include "updater/feed.h"

#include <gtest/gtest.h>

#include "support/named_case.h"

namespace tilora::updater {
namespace {

using namespace std::string_literals;

TEST(Feed, IsAnObjectOfThreeStrings) {
  const Updater expected = {.product = "Tilora", .version = "1.3", .file = "Tilora-1.3.zip"};
  EXPECT_EQ(decodeFeed(R"({"product":"Tilora","version":"1.3","file":"Tilora-1.3.zip"})").updater, expected);
  EXPECT_EQ(decodeFeed(" {\"file\" : \"Tilora-1.3.zip\" ,\n\"version\":\"1.3\", \"product\":\"Tilora\"}\r\n").updater, expected);
}

TEST(Feed, MayHaveMoreThanIsAskedFor) {
  EXPECT_EQ(decodeFeed(R"({"product":"","notes":[1,{"version":2}],"version":"1.3","size":1e9,"File":null,"file":""})").updater,
            (Updater{.product = "", .version = "1.3", .file = ""}));
}

TEST(Feed, KeepsWhatTheStringsSay) {
  EXPECT_EQ(decodeFeed(R"({"product":"\u0054\n","version":"1\u0000\ud83d\ude00","file":"é/\/"})").updater,
            (Updater{.product = "T\n", .version = "1\0😀"s, .file = "é//"}));
}

struct BrokenFeed {
  std::string name;
  std::string body;
  std::string error;
};

class AnythingElse : public testing::TestWithParam<BrokenFeed> {};

TEST_P(AnythingElse, IsRefusedInOneLine) {
  const DecodedFeed feed = decodeFeed(GetParam().body);
  EXPECT_FALSE(feed.updater);
  EXPECT_EQ(feed.error, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Feed, AnythingElse,
    testing::Values(
        BrokenFeed{"empty", "", "the feed is empty."},
        BrokenFeed{"without_product", R"({"version":"1","file":"x"})", "the feed has no \"product\"."},
        BrokenFeed{"without_version", R"({"product":"T","file":"x"})", "the feed has no \"version\"."},
        BrokenFeed{"without_file", R"({"product":"T","version":"1"})", "the feed has no \"file\"."},
        BrokenFeed{"key_in_other_case", R"({"product":"T","Version":"1","file":"x"})", "the feed has no \"version\"."},
        BrokenFeed{"product_null", R"({"product":null,"version":"1","file":"x"})", "\"product\" of the feed is not a string."},
        BrokenFeed{"version_number", R"({"product":"T","version":1.3,"file":"x"})", "\"version\" of the feed is not a string."},
        BrokenFeed{"version_list", R"({"product":"T","version":["1"],"file":"x"})", "\"version\" of the feed is not a string."},
        BrokenFeed{"file_bool", R"({"product":"T","version":"1","file":true})", "\"file\" of the feed is not a string."},
        BrokenFeed{"file_object", R"({"product":"T","version":"1","file":{}})", "\"file\" of the feed is not a string."},
        BrokenFeed{"list", R"(["T","1","x"])", "the feed is not a JSON object."},
        BrokenFeed{"string", R"("Tilora")", "the feed is not a JSON object."}, BrokenFeed{"null", "null", "the feed is not a JSON object."},
        BrokenFeed{"page", "<!DOCTYPE html><html></html>", "the feed is not JSON, from byte 1 on."},
        BrokenFeed{"cut_off", R"({"product":"T","versi)", "the feed is not JSON, from byte 22 on."},
        BrokenFeed{"two", R"({"product":"T","version":"1","file":"x"}{})", "the feed is not JSON, from byte 41 on."},
        BrokenFeed{"trailing_comma", R"({"product":"T","version":"1","file":"x",})", "the feed is not JSON, from byte 41 on."},
        BrokenFeed{"comment", "{}//", "the feed is not JSON, from byte 3 on."},
        BrokenFeed{"null_byte", "{\"product\":\"T\",\"version\":\"1\",\"file\":\"x\"}\0x"s, "the feed is not JSON."},
        BrokenFeed{"not_utf_8", "{\"product\":\"\xFF\",\"version\":\"1\",\"file\":\"x\"}", "the feed is not JSON, from byte 13 on."},
        BrokenFeed{"half_a_pair", R"({"product":"\ud800","version":"1","file":"x"})", "the feed is not JSON, from byte 19 on."},
        BrokenFeed{"huge_number", R"({"product":"T","version":"1","file":"x","n":1e999})", "the feed has a number that is too large."}),
    test::caseName);

TEST(Feed, OfADepthThatNobodyWritesIsReadWithoutHarm) {
  constexpr std::size_t depth = 1U << 20U;
  EXPECT_FALSE(decodeFeed(std::string(depth, '[')).updater);
  EXPECT_FALSE(decodeFeed(std::string(depth, '[') + std::string(depth, ']')).updater);
}

}  // namespace
}  // namespace tilora::updater
