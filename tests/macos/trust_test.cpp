// Asking whether this process is trusted.
#include "platform/macos/trust.h"

#include <gmock/gmock.h>

#include "mac_test.h"

namespace tilora::macos {
namespace {

using simulated::Effect;
using simulated::TrustRequested;
using testing::ElementsAre;

class AccessibilityTrust : public MacTest {
 protected:
  AxTrust trust_;
};

TEST_F(AccessibilityTrust, ThePlainQuestionAsksNobody) {
  EXPECT_TRUE(trust_.isProcessTrusted());
  world_->trust().trusted = false;
  EXPECT_FALSE(trust_.isProcessTrusted());
  EXPECT_TRUE(world_->takeEffects().empty());
}

TEST_F(AccessibilityTrust, TheUserIsAskedOnlyWhenThatIsWanted) {
  world_->trust().trusted = false;
  EXPECT_FALSE(trust_.isProcessTrusted(true));
  EXPECT_FALSE(trust_.isProcessTrusted(false));
  EXPECT_THAT(world_->takeEffects(), ElementsAre(Effect(TrustRequested{true}), Effect(TrustRequested{false})));
}

}  // namespace
}  // namespace tilora::macos
