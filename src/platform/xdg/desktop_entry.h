// The text of a desktop entry (freedesktop.org, Desktop Entry 1.5).
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tilora::xdg {

/// The value of a key of the group [Desktop Entry], as it stands there without the white space around it; nothing when it is not there. Of
/// a key given twice, the first counts.
std::optional<std::string_view> desktopEntryValue(std::string_view text, std::string_view key);

/// Whether a key of the group [Desktop Entry] is a boolean of that value.
bool desktopEntryHas(std::string_view text, std::string_view key, bool value);

/// A value of type string with its escape sequences.
std::string escapedString(std::string_view text);

/// The command line that starts `program`, an absolute path of any characters, as the value of the key Exec. Nothing when it cannot be
/// said: a desktop entry is UTF-8.
std::optional<std::string> execValue(const std::filesystem::path& program);

}  // namespace tilora::xdg
