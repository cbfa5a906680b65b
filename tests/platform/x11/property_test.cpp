// Window properties as clients may set them, hostile ones among them.
#include "platform/x11/property.h"

#include <gtest/gtest.h>

#include "bare_server.h"

namespace tilora::x11 {
namespace {

using Bytes = std::string;

class PropertyTest : public testing::Test {
 public:
  BareServer bare;
  const Atoms& atoms = bare.connection->atoms();
  xcb_window_t window = makeWindow();

  /// The property as it is read back, `longest` 32-bit units of it at most.
  Property stored(xcb_atom_t type, std::uint8_t format, const Bytes& bytes, std::uint32_t longest = 1024) {
    const auto count = static_cast<std::uint32_t>(bytes.size() / (format / 8U));
    xcb_change_property(bare.display.xcb(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, type, format, count, bytes.data());
    bare.display.sync();
    return read(longest);
  }

  Property read(std::uint32_t longest = 1024) const {
    auto* xcb = bare.connection->xcb();
    const auto cookie = xcb_get_property(xcb, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    xcb_generic_error_t* error = nullptr;
    Property property{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(xcb, cookie, &error)}};
    const Reply<xcb_generic_error_t> owned{error};
    return property;
  }

 private:
  xcb_window_t makeWindow() const {
    const xcb_window_t made = xcb_generate_id(bare.display.xcb());
    xcb_create_window(bare.display.xcb(), XCB_COPY_FROM_PARENT, made, bare.display.root(), 0, 0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    return made;
  }
};

Bytes words(std::initializer_list<std::uint32_t> values) {
  Bytes bytes;
  for (const auto value : values) bytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
  return bytes;
}

const std::string replacement = "\xEF\xBF\xBD";

TEST_F(PropertyTest, AnAbsentPropertyHasNothing) {
  bare.display.sync();
  const Property property = read();
  EXPECT_FALSE(property.isPresent());
  EXPECT_TRUE(property.items(XCB_ATOM_CARDINAL).empty());
  EXPECT_EQ(property.item(XCB_ATOM_CARDINAL), std::nullopt);
  EXPECT_EQ(property.text(atoms), std::nullopt);
  EXPECT_TRUE(property.texts(atoms).empty());
}

TEST_F(PropertyTest, APropertyOfAWindowThatIsGoneHasNothing) {
  xcb_destroy_window(bare.display.xcb(), window);
  bare.display.sync();
  const Property property = read();
  EXPECT_FALSE(property.isPresent());
  EXPECT_TRUE(property.items(XCB_ATOM_CARDINAL).empty());
  EXPECT_EQ(property.text(atoms), std::nullopt);
}

TEST_F(PropertyTest, ItemsAreThoseOfTheTypeAskedFor) {
  const Property property = stored(XCB_ATOM_CARDINAL, 32, words({1, 0xFFFFFFFF, 3}));
  EXPECT_EQ(property.items(XCB_ATOM_CARDINAL), (std::vector<std::uint32_t>{1, 0xFFFFFFFF, 3}));
  EXPECT_EQ(property.item(XCB_ATOM_CARDINAL), 1U);
  EXPECT_TRUE(property.items(XCB_ATOM_WINDOW).empty());
  EXPECT_EQ(property.text(atoms), std::nullopt);
}

TEST_F(PropertyTest, ItemsOfAnotherFormatAreNotRead) {
  for (const auto format : {std::uint8_t{8}, std::uint8_t{16}}) {
    EXPECT_TRUE(stored(XCB_ATOM_CARDINAL, format, words({1, 2})).items(XCB_ATOM_CARDINAL).empty());
  }
}

TEST_F(PropertyTest, APropertyWithoutItemsIsPresentAndEmpty) {
  const Property property = stored(XCB_ATOM_CARDINAL, 32, {});
  EXPECT_TRUE(property.isPresent());
  EXPECT_EQ(property.item(XCB_ATOM_CARDINAL), std::nullopt);
}

TEST_F(PropertyTest, ALongPropertyIsReadAsFarAsWasAskedFor) {
  EXPECT_EQ(stored(XCB_ATOM_CARDINAL, 32, Bytes(400000, '\x01'), 4).items(XCB_ATOM_CARDINAL).size(), 4U);
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, Bytes(200000, 'x'), 16).text(atoms), std::string(64, 'x'));
}

TEST_F(PropertyTest, TextCutInTheMiddleOfACharacterIsStillText) {
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, "abc\xC3\xBC", 1).text(atoms), "abc" + replacement);
}

TEST_F(PropertyTest, TextIsReadInItsEncoding) {
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8,
                   "Gr\xC3\xBC\xC3\x9F"
                   "e")
                .text(atoms),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_EQ(stored(XCB_ATOM_STRING, 8,
                   "Gr\xFC\xDF"
                   "e")
                .text(atoms),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
}

TEST_F(PropertyTest, TextThatIsNotUtf8IsRepaired) {
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, "a\xFFz").text(atoms), "a" + replacement + "z");
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, "\xED\xA0\x80").text(atoms)->find("\xED\xA0\x80"), std::string::npos);
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, "\xC0\xAF").text(atoms), replacement + replacement);
}

TEST_F(PropertyTest, TextEndsAtTheFirstNul) {
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, Bytes("one\0two", 7)).text(atoms), "one");
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, Bytes("\0two", 4)).text(atoms), std::nullopt);
  EXPECT_EQ(stored(atoms.UTF8_STRING, 8, {}).text(atoms), std::nullopt);
}

TEST_F(PropertyTest, TextsAreSeparatedByNuls) {
  EXPECT_EQ(stored(XCB_ATOM_STRING, 8, Bytes("instance\0Class\0", 15)).texts(atoms), (std::vector<std::string>{"instance", "Class"}));
  EXPECT_EQ(stored(XCB_ATOM_STRING, 8, Bytes("instance\0Class", 14)).texts(atoms), (std::vector<std::string>{"instance", "Class"}));
  EXPECT_EQ(stored(XCB_ATOM_STRING, 8, Bytes("\0Class\0", 7)).texts(atoms), (std::vector<std::string>{"", "Class"}));
}

TEST_F(PropertyTest, TextOfAnotherFormatIsNotRead) {
  EXPECT_EQ(stored(atoms.UTF8_STRING, 16, "abcd").text(atoms), std::nullopt);
  EXPECT_EQ(stored(atoms.UTF8_STRING, 32, "abcd").text(atoms), std::nullopt);
}

TEST(RepairedUtf8, KeepsWhatIsWellFormed) {
  for (const std::string text : {"", "plain", "\xC3\xBC", "\xF0\x9F\x8E\x89", "\xEF\xBF\xBD"}) EXPECT_EQ(repairedUtf8(text), text);
  EXPECT_EQ(repairedUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
}

}  // namespace
}  // namespace tilora::x11
