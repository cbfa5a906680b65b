// What the window server knows of a window.
#include "platform/macos/window_list.h"

#include <gmock/gmock.h>

#include "mac_test.h"
#include "windows/discovery.h"

namespace tilora::macos {
namespace {

class WindowServerList : public MacTest {
 protected:
  void listEntry(std::vector<std::pair<CFTypeRef, CFTypeRef>> members) {
    system_.windowList = [members = std::move(members)] {
      return static_cast<CFArrayRef>(fake::make<fake::CfArray>(std::vector<CFTypeRef>{fake::make<fake::CfDictionary>(members)}));
    };
  }

  WindowList list_;
};

TEST_F(WindowServerList, AWindowHasItsOwnerAndBounds) {
  world_->addWindow(8, 100,
                    {.attributes = {}, .settable = {}, .server = WindowServerEntry{.ownerPid = 100, .bounds = Rect{-10.5, 20, 640, 480}}});
  world_->setAttribute(8, AttributeName::windowNumber, Number(std::int64_t{4294967295}));

  const auto entries = list_.entries(4294967295);

  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries.front().ownerPid, 100);
  EXPECT_EQ(entries.front().bounds, (Rect{-10.5, 20, 640, 480}));
}

TEST_F(WindowServerList, AnUnknownWindowHasNoEntry) {
  EXPECT_TRUE(list_.entries(12).empty());
  system_.windowList = [] { return nullptr; };
  EXPECT_TRUE(list_.entries(7).empty());
}

TEST_F(WindowServerList, MembersOfOtherTypesAreAbsent) {
  listEntry({{kCGWindowOwnerPID, fake::make<fake::CfString>(u"100")}, {kCGWindowBounds, fake::make<fake::CfData>()}});
  const auto entries = list_.entries(7);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries.front().ownerPid, std::nullopt);
  EXPECT_EQ(entries.front().bounds, std::nullopt);
}

TEST_F(WindowServerList, BoundsThatAreNoRectangleAreAbsent) {
  listEntry({{kCGWindowBounds, fake::make<fake::CfDictionary>(std::vector<std::pair<CFTypeRef, CFTypeRef>>{})}});
  const auto entries = list_.entries(7);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries.front().bounds, std::nullopt);
}

TEST_F(WindowServerList, AnEntryThatIsNoDictionaryIsPassedOver) {
  system_.windowList = [] {
    return static_cast<CFArrayRef>(fake::make<fake::CfArray>(std::vector<CFTypeRef>{fake::make<fake::CfData>()}));
  };
  EXPECT_TRUE(list_.entries(7).empty());
}

using WindowServerListDeath = WindowServerList;

TEST_F(WindowServerListDeath, AWindowNumberBeyondThirtyTwoBitsEndsTheProgram) {
  EXPECT_DEATH((void)windowServerBounds({100, std::int64_t{1} << 32}, list_), "");
  EXPECT_DEATH((void)windowServerBounds({100, -1}, list_), "");
}

}  // namespace
}  // namespace tilora::macos
