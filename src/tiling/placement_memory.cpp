// What the engine remembers between passes.
#include "tiling/placement_memory.h"

#include <algorithm>
#include <utility>

#include "windows/screen_keys.h"
#include "windows/text_pool.h"

namespace tilora {
namespace {

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

}  // namespace

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

void PlacementMemory::setPlacement(const WindowKey& key, WindowPlacement placement) { windowPlacements_.insert_or_assign(key, placement); }

void PlacementMemory::prunePlacements(const WindowKeySet& live) {
  std::erase_if(windowPlacements_, [&](const auto& entry) { return !live.contains(entry.first); });
}

void PlacementMemory::applyPlacementPreferences(const std::vector<ManagedWindow>& windows) {
  if (choices_.all().empty()) return;
  for (auto window = windows.begin(); window != windows.end();) {
    const auto application = window->appIdentifier;
    const auto choices = choices_.of(application);
    for (; window != windows.end() && isSameText(window->appIdentifier, application); ++window) {
      if (const auto placement = choices.placementFor(window->windowIdentity)) setPlacement(window->key, *placement);
    }
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
