// The table of window managers.
#include "platform/x11/window_manager_traits.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

namespace tilora::x11 {
namespace {

struct Entry {
  /// The beginning of its name in lower case.
  std::string_view name;
  WindowManagerTraits traits;
};

// Measured with the versions of Debian 12. Mutter leaves iconic windows mapped, so that mapping them is no request at all; JWM, when it is
// asked to map one, leaves it marked as hidden; Fluxbox restores one of another desktop just once.
constexpr std::array entries = {
    Entry{"openbox", {RestoreMethod::activate, true, RestoreElsewhere::unreliable, true}},
    Entry{"xfwm4", {RestoreMethod::activate, true, RestoreElsewhere::inPlace, true}},
    Entry{"kwin", {RestoreMethod::map, false, RestoreElsewhere::inPlace, false}},
    Entry{"metacity", {RestoreMethod::map, false, RestoreElsewhere::movesHere, true}},
    Entry{"marco", {RestoreMethod::map, false, RestoreElsewhere::movesHere, true}},
    Entry{"icewm", {RestoreMethod::activate, true, RestoreElsewhere::inPlace, true}},
    Entry{"fluxbox", {RestoreMethod::activate, true, RestoreElsewhere::unreliable, false}},
    Entry{"jwm", {RestoreMethod::activate, true, RestoreElsewhere::unreliable, true}},
    Entry{"mutter", {RestoreMethod::activate, true, RestoreElsewhere::unreliable, true}},
    Entry{"gnome shell", {RestoreMethod::activate, true, RestoreElsewhere::unreliable, true}},
};

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return result;
}

}  // namespace

WindowManagerTraits traitsOf(std::string_view windowManagerName) {
  const std::string name = lowerCase(windowManagerName);
  const auto found = std::ranges::find_if(entries, [&](const Entry& entry) { return name.starts_with(entry.name); });
  return found == entries.end() ? WindowManagerTraits{} : found->traits;
}

}  // namespace tilora::x11
