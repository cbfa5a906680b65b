// Stable names of applications and windows.
#include "windows/identity.h"

#include <algorithm>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/unicode_text.h"

namespace tilora {
namespace {

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

std::string_view titleIn(const std::optional<AttributeValue>& value) {
  const auto* title = textIn(value);
  const auto rest = title ? trimmed(*title) : std::string_view();
  return rest.empty() ? "<untitled>" : rest;
}

std::optional<std::string> identifierIn(const std::optional<AttributeValue>& value) {
  const auto* identifier = textIn(value);
  const auto rest = identifier ? trimmed(*identifier) : std::string_view();
  return rest.empty() ? std::nullopt : std::optional(normalized(rest));
}

std::string titleIdentity(std::string_view title) {
  std::string identity(titlePrefix);
  appendNormalized(identity, title);
  return identity;
}

std::vector<std::string_view>& WindowNamer::identities(const std::vector<WindowIdentitySeed>& seeds) {
  for (auto& roles : roles_) roles.count = 0;
  places_.clear();
  places_.reserve(seeds.size());
  for (const auto& seed : seeds) {
    places_.push_back(placeOf(seed));
    if (!seed.axIdentifier) ++roles_[places_.back()].count;
  }
  identities_.clear();
  identities_.reserve(seeds.size());
  for (std::size_t i = 0; i < seeds.size(); ++i) identities_.push_back(identityOf(seeds[i], roles_[places_[i]]));
  return identities_;
}

std::size_t WindowNamer::placeOf(const WindowIdentitySeed& seed) {
  const auto known = std::find_if(roles_.begin(), roles_.end(), [&](const Roles& roles) {
    return isSameText(roles.subrole, seed.subrole) && isSameText(roles.role, seed.role);
  });
  const auto place = static_cast<std::size_t>(known - roles_.begin());
  if (known == roles_.end()) {
    std::string identity = "role:";
    appendNormalized(identity, seed.role);
    identity += "||";
    appendNormalized(identity, seed.subrole);
    roles_.push_back({seed.role, seed.subrole, texts_.keep(identity), 0});
  }
  return place;
}

/// Whether one window alone has the role key.
bool WindowNamer::isUnique(const Roles& roles) const {
  if (roles.count != 1) return false;
  return std::all_of(roles_.begin(), roles_.end(),
                     [&](const Roles& other) { return &other == &roles || other.count == 0 || other.identity != roles.identity; });
}

std::string_view WindowNamer::identityOf(const WindowIdentitySeed& seed, const Roles& roles) {
  if (seed.axIdentifier) return texts_.keep(std::string("axid:").append(*seed.axIdentifier));
  if (isUnique(roles)) return roles.identity;
  titled_.resize(titlePrefix.size());
  appendNormalized(titled_, seed.title);
  return texts_.keep(titled_);
}

std::string_view textAfter(std::string_view text, std::size_t length) {
  return text.size() < length ? std::string_view{} : text.substr(length);
}

}  // namespace tilora
