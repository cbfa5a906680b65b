// Finding the user's directories in the environment.
#include "platform/xdg/base_directories.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

namespace tilora::xdg {
namespace {

/// The path that a variable holds; empty when it is unset or not absolute.
std::filesystem::path absolutePathIn(const char* variable) {
  const char* value = std::getenv(variable);
  std::filesystem::path path(value == nullptr ? "" : value);
  return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path homeOfTheUserDatabase() {
  std::array<char, 16384> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr || found->pw_dir == nullptr) return {};
  return found->pw_dir;
}

}  // namespace

std::filesystem::path configurationHome() {
  if (auto path = absolutePathIn("XDG_CONFIG_HOME"); !path.empty()) return path;
  auto home = absolutePathIn("HOME");
  if (home.empty()) home = homeOfTheUserDatabase();
  return home.empty() ? home : home / ".config";
}

std::filesystem::path tiloraConfiguration() {
  const auto home = configurationHome();
  return home.empty() ? home : home / "tilora";
}

}  // namespace tilora::xdg
