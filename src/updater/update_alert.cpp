// What the user is asked, and when.
#include "updater/update_alert.h"

#include "updater/one_line.h"

namespace tilora::updater {
namespace {

/// Far more than a version has; a longer one would push the buttons off the screen.
constexpr std::size_t mostCharactersOfVersion = 100;

}  // namespace

UpdateAlert alertFor(const std::string& version) {
  return {
      .messageText = "Update Available",
      .informativeText = "A new version (" + oneLine(version, mostCharactersOfVersion) + ") is available. Would you like to download it?",
      .firstButton = "Download",
      .secondButton = "Cancel"};
}

bool countsAsNewer(const std::string& version, const std::optional<std::string>& localVersion) { return version != localVersion; }

}  // namespace tilora::updater
