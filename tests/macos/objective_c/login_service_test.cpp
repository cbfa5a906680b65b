// The program's own entry among those that start with the session.
#include "platform/macos/login_service.h"

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

class LoginServiceTest : public ObjectiveCTest {
 protected:
  LoginService service_;
};

TEST_F(LoginServiceTest, EveryStatusIsToldAsItIs) {
  for (const auto status :
       {LoginItemStatus::notRegistered, LoginItemStatus::enabled, LoginItemStatus::requiresApproval, LoginItemStatus::notFound}) {
    world_->loginItem().traits.status = status;
    EXPECT_EQ(service_.status(), status);
  }
}

TEST_F(LoginServiceTest, ARegistrationThatIsRefusedSaysWhy) {
  world_->loginItem().traits.registerError = "Operation not permitted";
  EXPECT_EQ(service_.registerItem(), "Operation not permitted");
  EXPECT_EQ(service_.status(), LoginItemStatus::notRegistered);
}

TEST_F(LoginServiceTest, TakingBackThatIsRefusedSaysWhy) {
  world_->loginItem().traits.status = LoginItemStatus::enabled;
  world_->loginItem().traits.unregisterError = "Not now";
  EXPECT_EQ(service_.unregisterItem(), "Not now");
  EXPECT_EQ(service_.status(), LoginItemStatus::enabled);
}

}  // namespace
}  // namespace tilora::macos
