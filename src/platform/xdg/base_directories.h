// Where a program of this user keeps its files (freedesktop.org, XDG Base Directory 0.8).
#pragma once

#include <filesystem>

namespace tilora::xdg {

/// $XDG_CONFIG_HOME when it is an absolute path, else ".config" in the home directory; a relative one is invalid and ignored. The home
/// directory is $HOME, else the one of the user database. Empty when there is none.
std::filesystem::path configurationHome();

/// The folder of this program's own configuration files.
std::filesystem::path tiloraConfiguration();

}  // namespace tilora::xdg
