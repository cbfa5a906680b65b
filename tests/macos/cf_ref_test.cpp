// Owning references to Core Foundation objects.
#include "platform/macos/cf_ref.h"

#include "mac_test.h"

namespace tilora::macos {
namespace {

CFNumberRef newNumber() { return static_cast<CFNumberRef>(fake::make<fake::CfNumber>(std::int64_t{1})); }

class CfReference : public MacTest {};

TEST_F(CfReference, AnAdoptedObjectGoesWithItsReference) {
  {
    const auto number = CfRef<CFNumberRef>::adopt(newNumber());
    EXPECT_TRUE(number);
    EXPECT_EQ(fake::liveObjects(), 1);
  }
  EXPECT_EQ(fake::liveObjects(), 0);
}

TEST_F(CfReference, ARetainedObjectStaysWithItsOwner) {
  const auto number = newNumber();
  { const auto borrowed = CfRef<CFNumberRef>::retain(number); }
  EXPECT_EQ(fake::liveObjects(), 1);
  CFRelease(number);
}

TEST_F(CfReference, AMovedReferenceIsReleasedOnce) {
  auto first = CfRef<CFNumberRef>::adopt(newNumber());
  auto second = std::move(first);
  EXPECT_TRUE(second);
  second = CfRef<CFNumberRef>::adopt(newNumber());
  EXPECT_TRUE(second);
}

TEST_F(CfReference, NullIsNoReference) {
  EXPECT_FALSE(CfRef<CFNumberRef>::adopt(nullptr));
  EXPECT_FALSE(CfRef<CFNumberRef>::retain(nullptr));
  EXPECT_EQ(CfRef<CFNumberRef>::adopt(nullptr).share(), nullptr);
}

TEST_F(CfReference, ASharedReferenceGoesWithItsLastHolder) {
  auto shared = CfRef<CFNumberRef>::adopt(newNumber()).share();
  auto other = shared;
  shared.reset();
  EXPECT_EQ(fake::liveObjects(), 1);
  other.reset();
  EXPECT_EQ(fake::liveObjects(), 0);
}

using CfReferenceDeath = CfReference;

TEST_F(CfReferenceDeath, TheFakeSystemEndsAProgramThatReleasesTooOften) {
  const auto number = newNumber();
  CFRelease(number);
  EXPECT_DEATH(CFRelease(number), "after its last reference was released");
}

TEST_F(CfReferenceDeath, TheFakeSystemEndsAProgramThatPassesNull) { EXPECT_DEATH(CFRelease(nullptr), "null was passed"); }

}  // namespace
}  // namespace tilora::macos
