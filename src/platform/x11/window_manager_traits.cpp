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

constexpr std::array entries = {
    Entry{"openbox", {RestoreMethod::activate, true, RestoreElsewhere::unreliable}},
    Entry{"xfwm4", {RestoreMethod::activate, true, RestoreElsewhere::inPlace}},
    Entry{"kwin", {RestoreMethod::map, false, RestoreElsewhere::inPlace}},
    Entry{"metacity", {RestoreMethod::map, false, RestoreElsewhere::movesHere}},
    Entry{"marco", {RestoreMethod::map, false, RestoreElsewhere::movesHere}},
    Entry{"icewm", {RestoreMethod::activate, true, RestoreElsewhere::inPlace}},
    Entry{"mutter", {RestoreMethod::activate, true, RestoreElsewhere::inPlace}},
    Entry{"gnome shell", {RestoreMethod::activate, true, RestoreElsewhere::inPlace}},
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
