// Stable names of applications and windows.
#include "windows/identity.h"

#include <algorithm>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/unicode_text.h"

namespace tilora {
namespace {

/// Counts the windows without identifier by role key. Roles as they are read differ little, so that a key is rarely built.
class RoleKeyCounts {
 public:
  /// Counts one window and answers the place of its roles.
  std::size_t add(const WindowIdentitySeed& seed) {
    const auto known = std::find_if(roles_.begin(), roles_.end(),
                                    [&](const Roles& roles) { return roles.subrole == seed.subrole && roles.role == seed.role; });
    const auto place = static_cast<std::size_t>(known - roles_.begin());
    if (known == roles_.end()) roles_.push_back({seed.role, seed.subrole, 0});
    ++roles_[place].count;
    return place;
  }

  /// The role key of the roles at a place.
  std::string key(std::size_t place) const { return normalized(roles_[place].role) + "||" + normalized(roles_[place].subrole); }

  /// Whether one window alone has that role key.
  bool isUnique(std::size_t place) const {
    if (roles_[place].count > 1) return false;
    if (roles_.size() == 1) return true;
    for (std::size_t other = 0; other < roles_.size(); ++other) {
      if (other != place && key(other) == key(place)) return false;
    }
    return true;
  }

 private:
  struct Roles {
    std::string_view role;
    std::string_view subrole;
    std::size_t count;
  };

  std::vector<Roles> roles_;
};

void appendNormalized(std::string& result, std::string_view text) {
  const std::size_t before = result.size();
  appendLowerCased(result, trimmed(text));
  if (result.size() == before) result += "<empty>";
}

}  // namespace

std::string normalized(std::string_view text) {
  std::string result;
  appendNormalized(result, text);
  return result;
}

std::string applicationIdentifier(const RunningApplication& application) {
  if (auto bundle = application.bundleIdentifier(); bundle && !bundle->empty()) return std::move(*bundle);
  if (auto name = application.localizedName(); name && !name->empty()) return std::move(*name);
  return "pid:" + std::to_string(application.processIdentifier());
}

std::string titleOf(const AccessibilityElement& window) {
  auto title = readString(window, AttributeName::title);
  if (!title) return "<untitled>";
  const auto rest = trimmed(*title);
  if (rest.empty()) return "<untitled>";
  if (rest.size() == title->size()) return std::move(*title);
  return std::string(rest);
}

std::optional<std::string> identifierOf(const AccessibilityElement& window) {
  const auto identifier = readString(window, AttributeName::identifier);
  if (!identifier || trimmed(*identifier).empty()) return std::nullopt;
  return normalized(*identifier);
}

std::string titleIdentity(std::string_view title) {
  std::string identity(titlePrefix);
  appendNormalized(identity, title);
  return identity;
}

std::vector<std::string_view> windowIdentities(const std::vector<WindowIdentitySeed>& seeds, std::pmr::memory_resource& texts) {
  RoleKeyCounts roleKeys;
  std::vector<std::size_t> places;
  places.reserve(seeds.size());
  for (const auto& seed : seeds) places.push_back(seed.axIdentifier ? 0 : roleKeys.add(seed));
  std::vector<std::string_view> identities;
  identities.reserve(seeds.size());
  std::string identity;
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    if (seeds[i].axIdentifier) {
      identity.assign("axid:").append(*seeds[i].axIdentifier);
    } else if (roleKeys.isUnique(places[i])) {
      identity.assign("role:").append(roleKeys.key(places[i]));
    } else {
      identity.assign(titlePrefix);
      appendNormalized(identity, seeds[i].title);
    }
    identities.push_back(keptText(identity, texts));
  }
  return identities;
}

std::string_view keptText(std::string_view text, std::pmr::memory_resource& texts) {
  if (text.empty()) return {};
  auto* kept = static_cast<char*>(texts.allocate(text.size(), 1));
  std::copy(text.begin(), text.end(), kept);
  return {kept, text.size()};
}

std::string_view textAfter(std::string_view text, std::size_t length) {
  return text.size() < length ? std::string_view{} : text.substr(length);
}

}  // namespace tilora
