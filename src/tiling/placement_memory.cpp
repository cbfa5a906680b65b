// What the engine remembers between passes.
#include "tiling/placement_memory.h"

#include <algorithm>
#include <utility>

#include "windows/identity.h"
#include "windows/screen_keys.h"

namespace tilora {
namespace {

constexpr std::string_view separator = "||";

using ScreenWindows = std::vector<const ManagedWindow*>;

const ManagedWindow* find(const WindowKey& key, const ScreenWindows& windows) {
  const auto found = std::find_if(windows.begin(), windows.end(), [&](const ManagedWindow* window) { return window->key == key; });
  return found == windows.end() ? nullptr : *found;
}

/// The keys of `keys` that are among the windows.
WindowKeySet among(const ScreenWindows& windows, const WindowKeySet& keys) {
  WindowKeySet present;
  for (const auto* window : windows) {
    if (keys.contains(window->key)) present.insert(window->key);
  }
  return present;
}

WindowKeySet keysOf(const ScreenWindows& windows) {
  WindowKeySet keys;
  for (const auto* window : windows) keys.insert(window->key);
  return keys;
}

/// Whether the key of a choice is that of some kind of window of the application.
bool isByIdentity(std::string_view key, std::string_view application) {
  return key.starts_with(application) && key.substr(application.size()).starts_with(separator);
}

/// The first choice for some kind of window of the application, or the end; `from` is the first choice whose key is not less than the
/// application. Mostly it is this one or the next, and there is nothing to look for.
PlacementPreferences::const_iterator firstByIdentity(const PlacementPreferences& all, std::string_view application,
                                                     PlacementPreferences::const_iterator from) {
  if (from != all.end() && from->first == application) ++from;
  if (from == all.end() || !from->first.starts_with(application)) return all.end();
  if (isByIdentity(from->first, application)) return from;
  const auto found = all.lower_bound(placementKey(application, {}));
  return found != all.end() && isByIdentity(found->first, application) ? found : all.end();
}

/// The choices for the windows of one application after the other. A list of windows has those of one application together.
class ApplicationPreferences {
 public:
  explicit ApplicationPreferences(const PlacementPreferences& all) : all_(all) {}

  std::optional<WindowPlacement> placementFor(const ManagedWindow& window) {
    if (!isSameText(window.appIdentifier, application_)) turnTo(window.appIdentifier);
    if (window.windowIdentity.empty() || !hasSpecific_) return whole_;
    if (const auto placement = specific(window.windowIdentity)) return placement;
    if (window.windowIdentity.starts_with(titlePrefix)) {
      if (const auto placement = specific(textAfter(window.windowIdentity, titlePrefix.size()))) return placement;
    }
    return whole_;
  }

 private:
  struct Choice {
    std::string_view identity;
    WindowPlacement placement;
  };

  /// More choices than these are not worth listing for the windows that one application has.
  static constexpr std::size_t mostListed = 16;

  void turnTo(std::string_view application) {
    application_ = application;
    whole_.reset();
    listed_.clear();
    const auto from = all_.lower_bound(application);
    if (from != all_.end() && from->first == application) whole_ = from->second;
    auto entry = firstByIdentity(all_, application, from);
    hasSpecific_ = entry != all_.end();
    for (; entry != all_.end() && isByIdentity(entry->first, application) && listed_.size() <= mostListed; ++entry) {
      listed_.push_back({textAfter(entry->first, application.size() + separator.size()), entry->second});
    }
  }

  std::optional<WindowPlacement> specific(std::string_view identity) {
    if (listed_.size() > mostListed) return amongAll(identity);
    for (const auto& choice : listed_) {
      if (choice.identity == identity) return choice.placement;
    }
    return std::nullopt;
  }

  std::optional<WindowPlacement> amongAll(std::string_view identity) {
    key_.assign(application_).append(separator).append(identity);
    const auto found = all_.find(key_);
    return found == all_.end() ? std::nullopt : std::optional(found->second);
  }

  const PlacementPreferences& all_;
  std::string_view application_;
  std::optional<WindowPlacement> whole_;
  bool hasSpecific_ = false;
  /// The choices by identity; one more than the most when there are too many.
  std::vector<Choice> listed_;
  /// Whatever was looked for last; kept for its room.
  std::string key_;
};

}  // namespace

std::string placementKey(std::string_view appIdentifier, std::string_view windowIdentity) {
  std::string key(appIdentifier);
  key += separator;
  key += windowIdentity;
  return key;
}

WindowPairings reciprocalPairings(const WindowPairings& pairings, const WindowKeySet& live) {
  WindowPairings kept;
  for (const auto& [a, b] : pairings) {
    if (!live.contains(a) || !live.contains(b) || a == b) continue;
    const auto back = pairings.find(b);
    if (back != pairings.end() && back->second == a) kept.emplace(a, b);
  }
  return kept;
}

WindowPlacement PlacementMemory::placementOf(const WindowKey& key) const {
  const auto entry = windowPlacements_.find(key);
  return entry == windowPlacements_.end() ? WindowPlacement::full : entry->second;
}

bool PlacementMemory::hasChoicesByIdentity(std::string_view appIdentifier) const {
  const auto& all = appPlacementPreferences_;
  return firstByIdentity(all, appIdentifier, all.lower_bound(appIdentifier)) != all.end();
}

void PlacementMemory::setPlacement(const WindowKey& key, WindowPlacement placement) { windowPlacements_.insert_or_assign(key, placement); }

void PlacementMemory::setAppPlacementPreferences(PlacementPreferences preferences) { appPlacementPreferences_ = std::move(preferences); }

void PlacementMemory::rememberChoice(std::string_view appIdentifier, std::string_view windowIdentity, WindowPlacement placement) {
  if (const auto whole = appPlacementPreferences_.find(appIdentifier); whole != appPlacementPreferences_.end()) {
    appPlacementPreferences_.erase(whole);
  }
  appPlacementPreferences_.insert_or_assign(placementKey(appIdentifier, windowIdentity), placement);
}

void PlacementMemory::prunePlacements(const WindowKeySet& live) {
  std::erase_if(windowPlacements_, [&](const auto& entry) { return !live.contains(entry.first); });
}

void PlacementMemory::applyPlacementPreferences(const std::vector<ManagedWindow>& windows) {
  if (appPlacementPreferences_.empty()) return;
  ApplicationPreferences preferences(appPlacementPreferences_);
  for (const auto& window : windows) {
    if (const auto placement = preferences.placementFor(window)) setPlacement(window.key, *placement);
  }
}

void PlacementMemory::prunePairings(const WindowKeySet& live) { windowPairings_ = reciprocalPairings(windowPairings_, live); }

void PlacementMemory::dropUnplacedPairings(const WindowKeySet& live) {
  std::vector<WindowKey> unplaced;
  for (const auto& [key, partner] : windowPairings_) {
    if (live.contains(key) && !oppositeOf(placementOf(key))) unplaced.push_back(key);
  }
  for (const auto& key : unplaced) unpair(key);
}

void PlacementMemory::unpair(WindowKey key) {
  const auto entry = windowPairings_.find(key);
  if (entry == windowPairings_.end()) return;
  const WindowKey partner = entry->second;
  windowPairings_.erase(entry);
  const auto back = windowPairings_.find(partner);
  if (back != windowPairings_.end() && back->second == key) windowPairings_.erase(back);
}

void PlacementMemory::pair(WindowKey a, WindowKey b) {
  if (a == b) return;
  unpair(a);
  unpair(b);
  windowPairings_.emplace(a, b);
  windowPairings_.emplace(b, a);
}

WindowKeySet PlacementMemory::visibleSetFor(WindowKey anchor, const ScreenWindows& screenWindows) {
  const ManagedWindow* anchorWindow = find(anchor, screenWindows);
  if (!anchorWindow) return keysOf(screenWindows);
  const auto opposite = oppositeOf(placementOf(anchor));
  if (!opposite) {
    unpair(anchor);
    return {anchor};
  }
  const auto isSuitable = [&](const WindowKey& key) { return key != anchor && placementOf(key) == *opposite; };
  if (const auto entry = windowPairings_.find(anchor); entry != windowPairings_.end()) {
    if (isSuitable(entry->second) && find(entry->second, screenWindows)) return {anchor, entry->second};
  }
  const ManagedWindow* candidate = nullptr;
  for (const auto* window : screenWindows) {
    if (!isSuitable(window->key)) continue;
    if (!candidate) candidate = window;
    if (window->screen != anchorWindow->screen) continue;
    candidate = window;
    break;
  }
  if (!candidate) {
    unpair(anchor);
    return {anchor};
  }
  pair(anchor, candidate->key);
  return {anchor, candidate->key};
}

WindowKeySet PlacementMemory::visibleOn(const std::string& screenKey, const ScreenWindows& screenWindows,
                                        const std::optional<WindowKey>& focused) {
  if (focused && find(*focused, screenWindows)) return visibleSetFor(*focused, screenWindows);
  if (const auto entry = visibleWindowKeysByScreen_.find(screenKey); entry != visibleWindowKeysByScreen_.end()) {
    if (auto remembered = among(screenWindows, entry->second); !remembered.empty()) return remembered;
  }
  return visibleSetFor(screenWindows.front()->key, screenWindows);
}

WindowKeySet PlacementMemory::assignVisibleWindows(const std::vector<ManagedWindow>& windows, const std::optional<WindowKey>& focused) {
  VisibleWindowKeys shownByScreen;
  WindowKeySet visible;
  for (const auto& group : groupByScreen(windows)) {
    auto shown = visibleOn(group.key, group.windows, focused);
    if (shown.empty()) continue;
    visible.insert(shown.begin(), shown.end());
    shownByScreen.emplace(group.key, std::move(shown));
  }
  visibleWindowKeysByScreen_ = std::move(shownByScreen);
  if (visible.empty()) {
    for (const auto& window : windows) visible.insert(window.key);
  }
  return visible;
}

}  // namespace tilora
