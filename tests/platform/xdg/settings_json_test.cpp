// The JSON form of settings: what is written is read again, and nothing that is read can do harm.
#include "platform/xdg/settings_json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace tilora::xdg {
namespace {

SettingValue afterOneRound(const SettingValue& value) {
  auto decoded = decodeSettings(encodeSettings({{"key", value}}));
  EXPECT_TRUE(decoded.isWhole);
  const auto found = decoded.values.find("key");
  if (found == decoded.values.end()) {
    ADD_FAILURE() << "the value is gone";
    return false;
  }
  return found->second;
}

TEST(SettingsJson, EveryTypeComesBackAsItWasStored) {
  const std::vector<SettingValue> values = {
      false,
      true,
      0.0,
      -3.5,
      0.1,
      1e-320,
      std::numeric_limits<double>::max(),
      std::numeric_limits<double>::infinity(),
      -std::numeric_limits<double>::infinity(),
      std::string(),
      std::string("text \"with\" \\ and \n and ü"),
      SettingData{},
      SettingData{R"({"a||b":"left"})"},
      SettingData{std::string("\0\x01\x7f", 3)},
      SettingData{"\xff\xfe\x80"},
      SettingData{"\xc0\xaf"},
      SettingData{"\xed\xa0\x80"},
      SettingDate(),
      SettingDate::min(),
      SettingDate::max(),
  };
  for (const auto& value : values) EXPECT_EQ(afterOneRound(value), value) << encodeSettings({{"key", value}});
}

TEST(SettingsJson, NotANumberComesBackAsNotANumber) {
  EXPECT_TRUE(std::isnan(std::get<double>(afterOneRound(std::numeric_limits<double>::quiet_NaN()))));
}

TEST(SettingsJson, TheSignOfZeroIsKept) { EXPECT_TRUE(std::signbit(std::get<double>(afterOneRound(-0.0)))); }

TEST(SettingsJson, EachByteComesBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const SettingValue value = SettingData{std::string(3, static_cast<char>(byte))};
    EXPECT_EQ(afterOneRound(value), value) << byte;
  }
}

TEST(SettingsJson, AKeyThatIsNoTextIsRepairedAndThrowsNothing) {
  const auto decoded = decodeSettings(encodeSettings({{"bad\xff", true}, {"good", 1.0}}));
  EXPECT_TRUE(decoded.isWhole);
  EXPECT_EQ(decoded.values, (SettingValues{{"bad\xef\xbf\xbd", true}, {"good", 1.0}}));
}

TEST(SettingsJson, AWholeNumberReadsAsADouble) {
  EXPECT_EQ(decodeSettings(R"({"a":{"type":"double","value":12}})").values, (SettingValues{{"a", 12.0}}));
  EXPECT_EQ(decodeSettings(R"({"a":{"type":"double","value":18446744073709551615}})").values,
            (SettingValues{{"a", 18446744073709551615.0}}));
}

TEST(SettingsJson, TheOrderOfTypeAndValueCarriesNoMeaning) {
  EXPECT_EQ(decodeSettings(R"({"a":{"value":false,"type":"bool"}})").values, (SettingValues{{"a", false}}));
}

TEST(SettingsJson, AnEntryThatIsNotUnderstoodIsLeftOutAndTheOthersCount) {
  const std::vector<std::string> entries = {
      "null",
      "true",
      "7",
      R"("text")",
      "{}",
      R"({"type":"bool"})",
      R"({"value":true})",
      R"({"type":"bool","value":null})",
      R"({"type":"bool","value":1})",
      R"({"type":"bool","value":"true"})",
      R"({"type":"double","value":true})",
      R"({"type":"double","value":"12"})",
      R"({"type":"date","value":1.5})",
      R"({"type":"date","value":9223372036854775808})",
      R"({"type":"data","value":12})",
      R"({"type":"data.hex","value":"abc"})",
      R"({"type":"data.hex","value":"zz"})",
      R"({"type":"text","value":false})",
      R"({"type":"colour","value":"red"})",
      R"({"type":1,"value":1})",
  };
  for (const auto& entry : entries) {
    const auto decoded = decodeSettings(R"({"odd":)" + entry + R"(,"even":{"type":"bool","value":false}})");
    EXPECT_FALSE(decoded.isWhole) << entry;
    EXPECT_EQ(decoded.values, (SettingValues{{"even", false}})) << entry;
  }
}

TEST(SettingsJson, AnEntryWithAMemberMoreThanItNeedsCountsAndTheTextIsNotWhole) {
  const auto decoded = decodeSettings(R"({"a":{"type":"bool","value":true,"since":2}})");
  EXPECT_EQ(decoded.values, (SettingValues{{"a", true}}));
  EXPECT_FALSE(decoded.isWhole);
}

TEST(SettingsJson, OfATextThatIsNotOneObjectNothingIsTaken) {
  const std::vector<std::string> texts = {
      "",
      " ",
      "null",
      "7",
      "[]",
      R"("text")",
      "{",
      R"({"a":{"type":"bool","value":true})",
      R"({"a":{"type":"bool","value":true}} x)",
      R"({"a":{"type":"bool","value":true},})",
      R"({"a":{"type":"bool","value":[true]}})",
      R"({"a":{"type":"bool","value":{"deeper":true}}})",
      R"({"a":{"type":"double","value":1e999}})",
      R"({"a":{"type":"double","value":NaN}})",
      "{\"a\":{\"type\":\"text\",\"value\":\"\xff\"}}",
      std::string("{\"a\"\0:1}", 8),
      std::string(4096, '\0'),
  };
  for (const auto& text : texts) {
    const auto decoded = decodeSettings(text);
    EXPECT_FALSE(decoded.isWhole) << text;
    EXPECT_TRUE(decoded.values.empty()) << text;
  }
}

TEST(SettingsJson, EveryTextCutShortIsNotWholeAndGivesNothing) {
  const std::string text = encodeSettings({{"a", true}, {"b", 1.5}, {"c", SettingData{"{}"}}, {"d", SettingDate()}});
  const auto end = text.rfind('}');
  for (std::size_t length = 0; length <= end; ++length) {
    const auto decoded = decodeSettings(text.substr(0, length));
    EXPECT_FALSE(decoded.isWhole) << length;
    EXPECT_TRUE(decoded.values.empty()) << length;
  }
}

TEST(SettingsJson, ATextNestedAMillionDeepGivesNothing) {
  constexpr std::size_t depth = 1000000;
  EXPECT_FALSE(decodeSettings(std::string(depth, '[')).isWhole);
  std::string objects;
  for (std::size_t i = 0; i < depth; ++i) objects += R"({"a":)";
  EXPECT_FALSE(decodeSettings(objects).isWhole);
}

}  // namespace
}  // namespace tilora::xdg
