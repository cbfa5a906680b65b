// The program's own entry among those that start with the session.
#pragma once

#include "platform/login_item.h"

namespace tilora::macos {

/// The login item that is the application itself.
class LoginService final : public LoginItem {
 public:
  LoginItemStatus status() override;
  std::optional<std::string> registerItem() override;
  std::optional<std::string> unregisterItem() override;
};

}  // namespace tilora::macos
