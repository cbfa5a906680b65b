// The program's own entry among those that start with the session.
#pragma once

#include <optional>
#include <string>

namespace tilora {

/// The states of the entry (SMAppServiceStatus).
enum class LoginItemStatus : int { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

class LoginItem {
 public:
  virtual ~LoginItem() = default;

  virtual LoginItemStatus status() = 0;
  /// Register and unregister: nothing on success, else the failure in words for the user.
  virtual std::optional<std::string> registerItem() = 0;
  virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace tilora
