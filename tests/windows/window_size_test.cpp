// Which size of a window can be laid out with, and what the window server has to say about it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"
#include "support/named_case.h"
#include "windows/discovery.h"

namespace tilora {
namespace {

using test::elementOf;

/// Answers with the entries it was given for any number.
class AnsweringWindowServer final : public WindowServer {
 public:
  explicit AnsweringWindowServer(std::vector<WindowServerEntry> entries) : entries_(std::move(entries)) {}

  std::vector<WindowServerEntry> entries(std::uint32_t windowNumber) override {
    askedFor = windowNumber;
    return entries_;
  }

  std::optional<std::uint32_t> askedFor;

 private:
  std::vector<WindowServerEntry> entries_;
};

constexpr Rect bounds = {1, 2, 300, 400};

TEST(WindowServerBounds, AreThoseOfTheFirstEntry) {
  AnsweringWindowServer server({{100, bounds}, {100, Rect{9, 9, 9, 9}}});

  EXPECT_EQ(windowServerBounds({100, 7}, server), bounds);
  EXPECT_EQ(server.askedFor, 7);
}

TEST(WindowServerBounds, AreAbsentWithoutAnEntry) {
  AnsweringWindowServer server({});

  EXPECT_EQ(windowServerBounds({100, 7}, server), std::nullopt);
}

TEST(WindowServerBounds, AreAbsentWhenTheFirstEntryBelongsToAnotherProcess) {
  AnsweringWindowServer server({{101, bounds}, {100, bounds}});

  EXPECT_EQ(windowServerBounds({100, 7}, server), std::nullopt);
}

TEST(WindowServerBounds, OfNobodyAreTaken) {
  AnsweringWindowServer server({{std::nullopt, bounds}});

  EXPECT_EQ(windowServerBounds({100, 7}, server), bounds);
}

TEST(WindowServerBounds, AreAbsentWhenTheFirstEntryHasNone) {
  AnsweringWindowServer server({{100, std::nullopt}, {100, bounds}});

  EXPECT_EQ(windowServerBounds({100, 7}, server), std::nullopt);
}

TEST(WindowServerBounds, AreAskedForWithEveryNumberOf32Bits) {
  AnsweringWindowServer server({{100, bounds}});

  EXPECT_EQ(windowServerBounds({100, 4294967295}, server), bounds);
  EXPECT_EQ(server.askedFor, 4294967295U);
  EXPECT_EQ(windowServerBounds({100, 0}, server), bounds);
  EXPECT_EQ(server.askedFor, 0);
}

TEST(WindowServerBoundsDeathTest, ANumberBeyond32BitsIsFatal) {
  AnsweringWindowServer server({{100, bounds}});

  EXPECT_DEATH(windowServerBounds({100, 4294967296}, server), "");
  EXPECT_DEATH(windowServerBounds({100, -1}, server), "");
}

/// What a window and the window server tell, and the size that comes of it.
struct SizeCase {
  std::string name;
  std::optional<Size> size;
  std::optional<Rect> serverBounds;
  bool isPositionReadable;
  std::optional<Size> usable;
};

class UsableSize : public testing::TestWithParam<SizeCase> {};

TEST_P(UsableSize, IsTheWindowsOwnOrElseTheWindowServers) {
  const auto& told = GetParam();
  auto builder = test::laptop();
  builder.app(100).window(1, {.server = told.serverBounds ? std::optional(WindowServerEntry{100, told.serverBounds}) : std::nullopt});
  builder.attribute(AttributeName::size, told.size ? std::optional<AttributeValue>(*told.size) : std::nullopt);
  if (!told.isPositionReadable) builder.attribute(AttributeName::position, std::nullopt);
  const auto desktop = builder.build();

  EXPECT_EQ(usableSize({100, 1}, *elementOf(*desktop, 100), desktop->interfaces().windowServer), told.usable);
}

INSTANTIATE_TEST_SUITE_P(Windows, UsableSize,
                         testing::Values(SizeCase{"Own", Size{30, 40}, bounds, true, Size{30, 40}},
                                         SizeCase{"OwnWithoutPosition", Size{30, 40}, std::nullopt, false, Size{30, 40}},
                                         SizeCase{"ZeroWidth", Size{0, 40}, bounds, true, Size{300, 400}},
                                         SizeCase{"ZeroHeight", Size{30, 0}, bounds, true, Size{300, 400}},
                                         SizeCase{"NegativeWidth", Size{-30, 40}, bounds, true, Size{300, 400}},
                                         SizeCase{"Unreadable", std::nullopt, bounds, true, Size{300, 400}},
                                         SizeCase{"UnreadableWithoutPosition", std::nullopt, bounds, false, Size{300, 400}},
                                         SizeCase{"NegativeBounds", Size{0, 0}, Rect{0, 0, -300, -400}, true, Size{300, 400}},
                                         SizeCase{"EmptyBounds", Size{-30, 40}, Rect{0, 0, 0, 400}, true, Size{-30, 40}},
                                         SizeCase{"NegativeAsRead", Size{-30, -40}, std::nullopt, true, Size{-30, -40}},
                                         SizeCase{"NegativeWithoutPosition", Size{-30, 40}, std::nullopt, false, std::nullopt},
                                         SizeCase{"NothingAtAll", std::nullopt, std::nullopt, true, std::nullopt},
                                         SizeCase{"ZeroEverywhere", Size{0, 40}, std::nullopt, true, std::nullopt}),
                         test::caseName);

TEST(UsableSizeDeathTest, ANumberBeyond32BitsIsFatalOnlyWhenTheWindowServerIsAsked) {
  constexpr WindowKey key = {100, 4294967296};
  const auto desktop = test::laptop().app(100).window(1).window(2).attribute(AttributeName::size, std::nullopt).build();
  auto& server = desktop->interfaces().windowServer;

  EXPECT_EQ(usableSize(key, *elementOf(*desktop, 100, 0), server), (Size{400, 300}));
  EXPECT_DEATH(usableSize(key, *elementOf(*desktop, 100, 1), server), "");
}

}  // namespace
}  // namespace tilora
