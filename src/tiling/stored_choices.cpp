// The placements that the user chose, as they are stored.
#include "tiling/stored_choices.h"

#include <utility>

#include "windows/identity.h"

namespace tilora {
namespace {

constexpr std::string_view separator = "||";

/// A key at its first separator.
struct KeyParts {
  std::string_view application;
  /// Absent from a key for a whole application.
  std::optional<std::string_view> identity;
};

KeyParts partsOf(std::string_view key) {
  const std::size_t end = key.find(separator);
  if (end == std::string_view::npos) return {key, std::nullopt};
  return {key.substr(0, end), key.substr(end + separator.size())};
}

/// Whether the first separator in the keys of an application is surely the one behind its identifier. Hardly one is called otherwise.
bool endsAtFirstSeparator(std::string_view appIdentifier) { return appIdentifier.find(separator.front()) == std::string_view::npos; }

template <class Choices>
std::optional<WindowPlacement> placementIn(const Choices& choices, std::string_view key) {
  const auto found = choices.find(key);
  return found == choices.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::string placementKey(std::string_view appIdentifier, std::string_view windowIdentity) {
  std::string key(appIdentifier);
  key += separator;
  key += windowIdentity;
  return key;
}

StoredChoices::StoredChoices(PlacementPreferences all) : all_(std::move(all)) {
  for (const auto& [key, placement] : all_) add(key, placement);
}

void StoredChoices::remember(std::string_view appIdentifier, std::string_view windowIdentity, WindowPlacement placement) {
  forget(appIdentifier);
  const auto entry = all_.insert_or_assign(placementKey(appIdentifier, windowIdentity), placement).first;
  add(entry->first, placement);
}

/// `key` is the text of a stored key.
void StoredChoices::add(std::string_view key, WindowPlacement placement) {
  const auto [application, identity] = partsOf(key);
  Group& group = groups_[std::string(application)];
  if (identity) {
    group.byIdentity.insert_or_assign(*identity, placement);
  } else {
    group.whole = placement;
  }
}

void StoredChoices::forget(std::string_view key) {
  const auto entry = all_.find(key);
  if (entry == all_.end()) return;
  const auto [application, identity] = partsOf(key);
  Group& group = groups_.find(application)->second;
  if (identity) {
    group.byIdentity.erase(*identity);
  } else {
    group.whole.reset();
  }
  all_.erase(entry);
}

StoredChoices::OfApplication::OfApplication(const StoredChoices& choices, std::string_view appIdentifier)
    : all_(&choices.all_), appIdentifier_(appIdentifier), hasOwnGroup_(endsAtFirstSeparator(appIdentifier)) {
  if (!hasOwnGroup_) return;
  const auto found = choices.groups_.find(appIdentifier);
  if (found != choices.groups_.end()) group_ = &found->second;
}

bool StoredChoices::OfApplication::haveIdentities() const {
  if (hasOwnGroup_) return group_ != nullptr && !group_->byIdentity.empty();
  const std::string start = placementKey(appIdentifier_, {});
  const auto found = all_->lower_bound(start);
  return found != all_->end() && found->first.starts_with(start);
}

std::optional<WindowPlacement> StoredChoices::OfApplication::placementFor(std::string_view windowIdentity) const {
  if (windowIdentity.empty()) return forWhole();
  if (const auto placement = forIdentity(windowIdentity)) return placement;
  if (windowIdentity.starts_with(titlePrefix)) {
    if (const auto placement = forIdentity(textAfter(windowIdentity, titlePrefix.size()))) return placement;
  }
  return forWhole();
}

std::optional<WindowPlacement> StoredChoices::OfApplication::forWhole() const {
  if (hasOwnGroup_) return group_ == nullptr ? std::nullopt : group_->whole;
  return placementIn(*all_, appIdentifier_);
}

std::optional<WindowPlacement> StoredChoices::OfApplication::forIdentity(std::string_view windowIdentity) const {
  if (hasOwnGroup_) return group_ == nullptr ? std::nullopt : placementIn(group_->byIdentity, windowIdentity);
  return placementIn(*all_, placementKey(appIdentifier_, windowIdentity));
}

}  // namespace tilora
