// Stable names of applications and windows, built from what their attributes say.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/workspace.h"
#include "windows/managed_window.h"
#include "windows/text_pool.h"

namespace tilora {

/// Begins the identity of a window that is told from others by its title.
inline constexpr std::string_view titlePrefix = "title:";

/// `text` without white space at its ends, in lower case; "<empty>" when nothing is left.
std::string normalized(std::string_view text);

/// The bundle identifier of an application, or else its name, or else "pid:" and its process id; as they stand.
std::string applicationIdentifier(const RunningApplication& application);

/// The title in what reading "AXTitle" gave, without white space at its ends; "<untitled>" when missing or blank.
std::string_view titleIn(const std::optional<AttributeValue>& value);

/// The identifier in what reading "AXIdentifier" gave, normalised; nothing when missing or blank.
std::optional<std::string> identifierIn(const std::optional<AttributeValue>& value);

/// "title:" and the normalised title.
std::string titleIdentity(std::string_view title);

/// Names the windows of applications, one application after the other.
class WindowNamer {
 public:
  /// `texts` holds the names and must outlive them and the namer.
  explicit WindowNamer(TextPool& texts) : texts_(texts) {}

  /// The identities of one application's windows, in their order: by identifier where there is one, else by role where that is unique among
  /// the windows without identifier, else by title. Valid until the next call.
  std::vector<std::string_view>& identities(const std::vector<WindowIdentitySeed>& seeds);

 private:
  /// A role and subrole as they were read, and how many windows without identifier have them.
  struct Roles {
    std::string_view role;
    std::string_view subrole;
    /// "role:" and the role key; roles that differ only before normalising share it.
    std::string_view identity;
    std::size_t count;
  };

  std::size_t placeOf(const WindowIdentitySeed& seed);
  bool isUnique(const Roles& roles) const;
  std::string_view identityOf(const WindowIdentitySeed& seed, const Roles& roles);

  TextPool& texts_;
  std::vector<Roles> roles_;
  /// For each window of the application at hand its place among the roles, then its identity.
  std::vector<std::size_t> places_;
  std::vector<std::string_view> identities_;
  /// The title prefix, and behind it the title that was named last.
  std::string titled_{titlePrefix};
};

/// `text` after its first `length` characters; empty when it is shorter.
std::string_view textAfter(std::string_view text, std::size_t length);

}  // namespace tilora
