// Stable names of applications and windows.
#include "windows/identity.h"

#include <utility>

#include "windows/attribute_readers.h"
#include "windows/unicode_text.h"

namespace tilora {
namespace {

std::string roleKey(const WindowIdentitySeed& seed) { return normalized(seed.role) + "||" + normalized(seed.subrole); }

bool sameRole(const WindowIdentitySeed& a, const WindowIdentitySeed& b) { return a.role == b.role && a.subrole == b.subrole; }

using RoleKeyCounts = std::unordered_map<std::string, std::size_t>;

/// Counts the windows without identifier by role key and answers, for each seed, the entry that counted it; null for one with an
/// identifier. Neighbours mostly share their role, so that a key is rarely built.
std::vector<const RoleKeyCounts::value_type*> countRoleKeys(const std::vector<WindowIdentitySeed>& seeds, RoleKeyCounts& counts) {
  std::vector<const RoleKeyCounts::value_type*> entries;
  entries.reserve(seeds.size());
  const WindowIdentitySeed* last = nullptr;
  RoleKeyCounts::value_type* entry = nullptr;
  for (const auto& seed : seeds) {
    if (seed.axIdentifier) {
      entries.push_back(nullptr);
      continue;
    }
    if (!last || !sameRole(*last, seed)) entry = &*counts.try_emplace(roleKey(seed), 0).first;
    last = &seed;
    ++entry->second;
    entries.push_back(entry);
  }
  return entries;
}

std::string identityOf(const WindowIdentitySeed& seed, const RoleKeyCounts::value_type* counted) {
  if (seed.axIdentifier) return "axid:" + *seed.axIdentifier;
  if (counted->second >= 2) return titleIdentity(seed.title);
  return "role:" + counted->first;
}

}  // namespace

std::string normalized(std::string_view text) {
  auto result = lowerCased(trimmed(text));
  if (result.empty()) result = "<empty>";
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
  identity += normalized(title);
  return identity;
}

WindowIdentities windowIdentities(const std::vector<WindowIdentitySeed>& seeds) {
  RoleKeyCounts counts;
  const auto counted = countRoleKeys(seeds, counts);
  WindowIdentities identities;
  identities.reserve(seeds.size());
  for (std::size_t i = 0; i < seeds.size(); ++i) identities.insert_or_assign(seeds[i].key, identityOf(seeds[i], counted[i]));
  return identities;
}

std::string_view textAfter(std::string_view text, std::size_t length) {
  return text.size() < length ? std::string_view{} : text.substr(length);
}

}  // namespace tilora
