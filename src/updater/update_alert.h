// The question whether to download another version.
#pragma once

#include <optional>
#include <string>

namespace tilora::updater {

/// The texts of an alert of informational style, from top to bottom and in the order of the buttons. One line each, UTF-8.
struct UpdateAlert {
  std::string messageText;
  std::string informativeText;
  std::string firstButton;
  std::string secondButton;

  bool operator==(const UpdateAlert&) const = default;
};

UpdateAlert alertFor(const std::string& version);

/// Whether the alert is called for: the two versions differ in any way, an older one included, or there is no local one.
bool countsAsNewer(const std::string& version, const std::optional<std::string>& localVersion);

}  // namespace tilora::updater
