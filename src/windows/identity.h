// Stable names of applications and windows, built from what their attributes say.
#pragma once

#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/workspace.h"
#include "windows/managed_window.h"

namespace tilora {

/// Begins the identity of a window that is told from others by its title.
inline constexpr std::string_view titlePrefix = "title:";

/// `text` without white space at its ends, in lower case; "<empty>" when nothing is left.
std::string normalized(std::string_view text);

/// The bundle identifier of an application, or else its name, or else "pid:" and its process id; as they stand.
std::string applicationIdentifier(const RunningApplication& application);

/// "AXTitle" without white space at its ends; "<untitled>" when missing or blank.
std::string titleOf(const AccessibilityElement& window);

/// "AXIdentifier", normalised; nothing when missing or blank.
std::optional<std::string> identifierOf(const AccessibilityElement& window);

/// "title:" and the normalised title.
std::string titleIdentity(std::string_view title);

/// The identities of one application's windows, in their order: by identifier where there is one, else by role where that is unique among
/// the windows without identifier, else by title. `texts` holds them.
std::vector<std::string_view> windowIdentities(const std::vector<WindowIdentitySeed>& seeds, std::pmr::memory_resource& texts);

/// A copy of `text` that `texts` holds.
std::string_view keptText(std::string_view text, std::pmr::memory_resource& texts);

/// `text` after its first `length` characters; empty when it is shorter.
std::string_view textAfter(std::string_view text, std::size_t length);

}  // namespace tilora
