// Which values each reader takes, and by which number a window goes.
#include "windows/attribute_readers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/desktops.h"
#include "support/named_case.h"

namespace tilora {
namespace {

using test::elementOf;

/// A value under "AXTitle", and what each reader makes of it.
struct ReaderCase {
  std::string name;
  std::optional<AttributeValue> value;
  std::optional<std::string> text = {};
  std::optional<bool> truth = {};
  std::optional<std::int64_t> integer = {};
  std::optional<Point> point = {};
  std::optional<Size> size = {};
};

class Readers : public testing::TestWithParam<ReaderCase> {};

TEST_P(Readers, TakeOnlyValuesOfTheirOwnType) {
  const auto& expected = GetParam();
  const auto desktop = test::laptop().app(100).window(1).attribute(AttributeName::title, expected.value).build();
  const auto window = elementOf(*desktop, 100);

  EXPECT_EQ(readString(*window, AttributeName::title), expected.text);
  EXPECT_EQ(readBoolean(*window, AttributeName::title), expected.truth);
  EXPECT_EQ(readInteger(*window, AttributeName::title), expected.integer);
  EXPECT_EQ(readPoint(*window, AttributeName::title), expected.point);
  EXPECT_EQ(readSize(*window, AttributeName::title), expected.size);
  EXPECT_EQ(readElement(*window, AttributeName::title), nullptr);
  EXPECT_EQ(readElements(*window, AttributeName::title), std::nullopt);
}

constexpr auto largest = std::numeric_limits<std::int64_t>::max();

INSTANTIATE_TEST_SUITE_P(Values, Readers,
                         testing::Values(ReaderCase{.name = "Nothing", .value = std::nullopt},
                                         ReaderCase{.name = "ForeignValue", .value = ForeignValue{}},
                                         ReaderCase{.name = "Text", .value = std::string("Notes"), .text = "Notes"},
                                         ReaderCase{.name = "EmptyText", .value = std::string(), .text = ""},
                                         ReaderCase{.name = "TextOfANumber", .value = std::string("1"), .text = "1"},
                                         ReaderCase{.name = "True", .value = true, .truth = true, .integer = 1},
                                         ReaderCase{.name = "False", .value = false, .truth = false, .integer = 0},
                                         ReaderCase{.name = "Zero", .value = Number(std::int64_t{0}), .truth = false, .integer = 0},
                                         ReaderCase{.name = "Minus", .value = Number(std::int64_t{-7}), .truth = true, .integer = -7},
                                         ReaderCase{.name = "Large", .value = Number(largest), .truth = true, .integer = largest},
                                         ReaderCase{.name = "Fraction", .value = Number(7.9), .truth = true, .integer = 7},
                                         ReaderCase{.name = "NegativeFraction", .value = Number(-7.9), .truth = true, .integer = -7},
                                         ReaderCase{.name = "SmallFraction", .value = Number(0.25), .truth = true, .integer = 0},
                                         ReaderCase{.name = "PointValue", .value = Point{3, 4}, .point = Point{3, 4}},
                                         ReaderCase{.name = "SizeValue", .value = Size{3, 4}, .size = Size{3, 4}}),
                         test::caseName);

TEST(ElementReaders, TakeAnElementAndAListOfElements) {
  const auto desktop = test::laptop().app(100).window(1).window(2).window(3).window(4).build();
  const auto first = elementOf(*desktop, 100, 0);
  const auto second = elementOf(*desktop, 100, 1);
  const auto tellsOne = elementOf(*desktop, 100, 2);
  const auto tellsTwo = elementOf(*desktop, 100, 3);

  desktop->setAttribute(3, AttributeName::title, first);
  desktop->setAttribute(4, AttributeName::title, std::vector<Element>{first, second});

  EXPECT_EQ(readElement(*tellsOne, AttributeName::title), first);
  EXPECT_EQ(readElements(*tellsOne, AttributeName::title), std::nullopt);
  EXPECT_THAT(readElements(*tellsTwo, AttributeName::title), testing::Optional(testing::ElementsAre(first, second)));
  EXPECT_EQ(readElement(*tellsTwo, AttributeName::title), nullptr);
  EXPECT_EQ(readString(*tellsOne, AttributeName::title), std::nullopt);
  EXPECT_EQ(readInteger(*tellsTwo, AttributeName::title), std::nullopt);
}

TEST(WindowNumber, IsTheNumberThatTheWindowTells) {
  const auto desktop = test::laptop().app(100).window(1, {.number = 4711}).build();

  EXPECT_EQ(windowNumberOf(*elementOf(*desktop, 100)), 4711);
}

TEST(WindowNumber, IsTheHashOfAWindowThatTellsNone) {
  const auto desktop = test::laptop().app(100).window(8).attribute(AttributeName::windowNumber, std::nullopt).build();
  const auto window = elementOf(*desktop, 100);

  EXPECT_EQ(windowNumberOf(*window), 8);
  EXPECT_EQ(windowNumberOf(*window), windowNumberOf(*elementOf(*desktop, 100)));
}

TEST(WindowNumber, IsTheHashOfAWindowWhoseNumberIsNoNumber) {
  const auto desktop = test::laptop().app(100).window(8).attribute(AttributeName::windowNumber, std::string("7")).build();

  EXPECT_EQ(windowNumberOf(*elementOf(*desktop, 100)), 8);
}

TEST(WindowNumber, IsTheLargestHashThatFits) {
  const auto desktop = test::laptop().app(100).window(largest).attribute(AttributeName::windowNumber, std::nullopt).build();

  EXPECT_EQ(windowNumberOf(*elementOf(*desktop, 100)), largest);
}

TEST(WindowNumberDeathTest, AHashBeyondTheSignedRangeIsFatal) {
  constexpr simulated::WindowId tooLarge = std::uint64_t{1} << 63;
  const auto desktop = test::laptop().app(100).window(tooLarge).attribute(AttributeName::windowNumber, std::nullopt).build();
  const auto window = elementOf(*desktop, 100);

  EXPECT_DEATH(windowNumberOf(*window), "");
}

}  // namespace
}  // namespace tilora
