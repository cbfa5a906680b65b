// Texts that are addresses, and how they are written.
#include "updater/address.h"

#include <gtest/gtest.h>

#include "support/named_case.h"

namespace tilora::updater {
namespace {

using namespace std::string_literals;

struct AddressCase {
  std::string name;
  std::string text;
  std::optional<std::string> address;
};

class AddressOf : public testing::TestWithParam<AddressCase> {};

TEST_P(AddressOf, IsWrittenInTheCharactersOfAnAddress) { EXPECT_EQ(encodedAddress(GetParam().text), GetParam().address); }

INSTANTIATE_TEST_SUITE_P(
    Text, AddressOf,
    testing::Values(
        AddressCase{"plain", "https://a.invalid/tilora/updater.json", "https://a.invalid/tilora/updater.json"},
        AddressCase{"space", "https://a.invalid/Tilora 1.3.zip", "https://a.invalid/Tilora%201.3.zip"},
        AddressCase{"encoded_byte", "https://a.invalid/Tilora%201.3.zip", "https://a.invalid/Tilora%201.3.zip"},
        AddressCase{"lone_percent", "https://a.invalid/100%/%2/%zz", "https://a.invalid/100%25/%252/%25zz"},
        AddressCase{"letters_of_others", "https://a.invalid/\xC3\xA9\xE2\x82\xAC", "https://a.invalid/%C3%A9%E2%82%AC"},
        AddressCase{"quotes_and_brackets", R"(https://a.invalid/"<>\^`{|}[])", "https://a.invalid/%22%3C%3E%5C%5E%60%7B%7C%7D%5B%5D"},
        AddressCase{"line_feed_and_null", "https://a.invalid/a\n\0b"s, "https://a.invalid/a%0A%00b"},
        AddressCase{"dots", "https://a.invalid/tilora/../../x", "https://a.invalid/tilora/../../x"},
        AddressCase{"scheme_of_its_own", "https://a.invalid/tilora/file:///etc/x", "https://a.invalid/tilora/file:///etc/x"},
        AddressCase{"host_of_its_own", "https://a.invalid/tilora///b.invalid/x", "https://a.invalid/tilora///b.invalid/x"},
        AddressCase{"user_of_its_own", "https://a.invalid/tilora/@b.invalid/x", "https://a.invalid/tilora/@b.invalid/x"},
        AddressCase{"query", "https://a.invalid/x?y=[1 2]&z", "https://a.invalid/x?y=%5B1%202%5D&z"},
        AddressCase{"fragment", "https://a.invalid/x#y#z?", "https://a.invalid/x#y%23z?"},
        AddressCase{"query_without_path", "https://a.invalid?x/y", "https://a.invalid?x/y"},
        AddressCase{"port", "http://127.0.0.1:8080/x", "http://127.0.0.1:8080/x"},
        AddressCase{"empty_port", "http://a.invalid:/x", "http://a.invalid:/x"},
        AddressCase{"brackets", "http://[::1]:80/x", "http://[::1]:80/x"},
        AddressCase{"user", "http://u:p@a.invalid/x", "http://u:p@a.invalid/x"},
        AddressCase{"encoded_user", "http://u u@a.invalid/", "http://u%20u@a.invalid/"}, AddressCase{"no_host", "https:///x", "https:///x"},
        AddressCase{"no_authority", "mailto:a@b", "mailto:a@b"}, AddressCase{"no_scheme", "tilora/updater.json", "tilora/updater.json"},
        AddressCase{"colon_in_the_path", "tilora/a:b", "tilora/a:b"}, AddressCase{"no_scheme_but_host", "//a.invalid/x", "//a.invalid/x"},
        AddressCase{"empty", "", std::nullopt}, AddressCase{"empty_scheme", "://a.invalid/x", std::nullopt},
        AddressCase{"digit_scheme", "1http://a.invalid/x", std::nullopt},
        AddressCase{"scheme_with_space", "ht tp://a.invalid/x", std::nullopt},
        AddressCase{"host_with_space", "https://a b.invalid/x", std::nullopt},
        AddressCase{"host_of_other_letters", "https://\xC3\xA9.invalid/x", std::nullopt},
        AddressCase{"host_with_backslash", "https://a\\b/x", std::nullopt},
        AddressCase{"host_with_lone_percent", "https://a%/x", std::nullopt},
        AddressCase{"host_with_encoded_byte", "https://a%2Db/x", "https://a%2Db/x"},
        AddressCase{"port_of_letters", "https://a.invalid:port/x", std::nullopt},
        AddressCase{"negative_port", "https://a.invalid:-1/x", std::nullopt},
        AddressCase{"two_ports", "https://a.invalid:1:2/x", std::nullopt}, AddressCase{"open_bracket", "https://[::1/x", std::nullopt},
        AddressCase{"empty_brackets", "https://[]/x", std::nullopt}, AddressCase{"name_in_brackets", "https://[name]/x", std::nullopt},
        AddressCase{"text_after_brackets", "https://[::1]x/x", std::nullopt},
        AddressCase{"closing_bracket", "https://a]b/x", std::nullopt}),
    test::caseName);

TEST(Address, IsTheSameWhenItIsEncodedAgain) {
  std::string text = "https://a.invalid/";
  for (int byte = 0; byte < 256; ++byte) text += static_cast<char>(byte);
  const auto once = encodedAddress(text);
  ASSERT_TRUE(once);
  EXPECT_EQ(encodedAddress(*once), once);
}

}  // namespace
}  // namespace tilora::updater
