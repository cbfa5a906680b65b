// Core Foundation values as values of the program.
#include "platform/macos/cf_values.h"

#include <limits>

#include "mac_test.h"
#include "platform/macos/cf_ref.h"

namespace tilora::macos {
namespace {

class CfValues : public MacTest {
 protected:
  static std::string textOf(std::u16string units) {
    const auto string = CfRef<CFStringRef>::adopt(static_cast<CFStringRef>(fake::make<fake::CfString>(std::move(units))));
    return utf8Text(string.get());
  }
  static Number numberFrom(std::variant<std::int64_t, double> value) {
    const auto number = CfRef<CFNumberRef>::adopt(static_cast<CFNumberRef>(fake::make<fake::CfNumber>(value)));
    return numberOf(number.get());
  }
};

TEST_F(CfValues, ATextKeepsEveryCharacter) {
  EXPECT_EQ(textOf(u""), "");
  EXPECT_EQ(textOf(u"Notes"), "Notes");
  EXPECT_EQ(textOf(u"Füße – 窓 \U0001F600"), "Füße – 窓 \U0001F600");
  EXPECT_EQ(textOf(u"\u007F\u0080\u07FF\u0800\uFFFF"), "\u007F\u0080\u07FF\u0800\uFFFF");
  EXPECT_EQ(textOf(u"\U00010000\U0010FFFF"), "\U00010000\U0010FFFF");
}

TEST_F(CfValues, ATextGoesOnBehindANullCharacter) { EXPECT_EQ(textOf(std::u16string(u"a\0b", 3)), std::string("a\0b", 3)); }

TEST_F(CfValues, HalfASurrogatePairIsReplaced) {
  EXPECT_EQ(textOf({0xD83D}), "\uFFFD");
  EXPECT_EQ(textOf({0xDE00, u'a'}), "\uFFFDa");
  EXPECT_EQ(textOf({0xD83D, 0xD83D, 0xDE00}), "\uFFFD\U0001F600");
  EXPECT_EQ(textOf({0xD83D, u'a'}), "\uFFFDa");
}

TEST_F(CfValues, AWholeNumberKeepsAllItsBits) {
  for (const std::int64_t value : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{1} << 32, std::numeric_limits<std::int64_t>::max(),
                                   std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(numberFrom(value), Number(value));
  }
}

TEST_F(CfValues, AFractionIsTrueThoughItsWholePartIsNot) {
  EXPECT_EQ(numberFrom(0.5), Number(0.5));
  EXPECT_TRUE(numberFrom(0.5).toBool());
  EXPECT_EQ(numberFrom(-7.9).toInteger(), -7);
}

TEST_F(CfValues, AnObjectOfAnotherTypeIsNone) {
  const auto data = CfRef<CFTypeRef>::adopt(fake::make<fake::CfData>());
  for (const CFTypeRef object : {CFTypeRef{nullptr}, data.get()}) {
    EXPECT_EQ(asString(object), nullptr);
    EXPECT_EQ(asNumber(object), nullptr);
    EXPECT_EQ(asBoolean(object), nullptr);
    EXPECT_EQ(asArray(object), nullptr);
    EXPECT_EQ(asDictionary(object), nullptr);
  }
  EXPECT_EQ(asNumber(kCFBooleanTrue), nullptr);
  EXPECT_EQ(asBoolean(kCFBooleanTrue), kCFBooleanTrue);
}

}  // namespace
}  // namespace tilora::macos
