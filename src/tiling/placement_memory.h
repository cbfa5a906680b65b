// What the engine remembers between passes: placements, the user's choices, pairs, and what each screen showed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tiling/placement.h"
#include "tiling/stored_choices.h"
#include "tiling/text_map.h"
#include "windows/managed_window.h"
#include "windows/window_key.h"

namespace tilora {

using WindowPlacements = std::unordered_map<WindowKey, WindowPlacement>;
using WindowPairings = std::unordered_map<WindowKey, WindowKey>;
using VisibleWindowKeys = TextMap<WindowKeySet>;

/// The entries of `pairings` that join two different live windows and lead back.
WindowPairings reciprocalPairings(const WindowPairings& pairings, const WindowKeySet& live);

/// The four maps of the engine and every rule that changes them. It knows no desktop.
///
/// After each pass every key of placements and pairings is a live window, pairings are reciprocal and join two different windows, one of
/// them `left` and the other `right`.
class PlacementMemory {
 public:
  const WindowPlacements& windowPlacements() const { return windowPlacements_; }
  const PlacementPreferences& appPlacementPreferences() const { return choices_.all(); }
  const WindowPairings& windowPairings() const { return windowPairings_; }
  const VisibleWindowKeys& visibleWindowKeysByScreen() const { return visibleWindowKeysByScreen_; }

  /// The placement of a window; `full` when it has none.
  WindowPlacement placementOf(const WindowKey& key) const;

  /// Whether the user chose a placement for some kind of window of the application, so that the identities of its windows matter.
  bool hasChoicesByIdentity(std::string_view appIdentifier) const { return choices_.of(appIdentifier).haveIdentities(); }

  void setPlacement(const WindowKey& key, WindowPlacement placement);
  void setAppPlacementPreferences(PlacementPreferences preferences) { choices_ = StoredChoices(std::move(preferences)); }
  /// Remembers the user's choice for one kind of window of an application, in place of a choice for the whole application.
  void rememberChoice(std::string_view appIdentifier, std::string_view windowIdentity, WindowPlacement placement) {
    choices_.remember(appIdentifier, windowIdentity, placement);
  }

  /// Forgets the placements of windows that are not live.
  void prunePlacements(const WindowKeySet& live);
  /// Gives each window the placement that the user chose for its kind, in whichever form it was stored. A window may go without identity
  /// where no choice depends on it.
  void applyPlacementPreferences(const std::vector<ManagedWindow>& windows);
  /// Keeps only reciprocal pairs of two different live windows.
  void prunePairings(const WindowKeySet& live);
  /// Unpairs each live window that is neither `left` nor `right`.
  void dropUnplacedPairings(const WindowKeySet& live);
  /// Takes a window and its partner apart; without a partner nothing happens.
  void unpair(WindowKey key);
  /// Joins two windows; a former partner of either is left alone.
  void pair(WindowKey a, WindowKey b);

  /// Which of one screen's windows are shown when `anchor` is: it alone, or with a partner on the other half, which it is then paired
  /// with. All of them when the anchor is not among them.
  WindowKeySet visibleSetFor(WindowKey anchor, const std::vector<const ManagedWindow*>& screenWindows);
  /// Which windows are shown, on every screen: the screen of the focused window follows it, every other keeps what it showed. All windows
  /// when that leaves none. Remembers the answer for the next pass.
  WindowKeySet assignVisibleWindows(const std::vector<ManagedWindow>& windows, const std::optional<WindowKey>& focused);

 private:
  bool hasHalf(const WindowKey& key) const;
  WindowKeySet visibleOn(const std::string& screenKey, const std::vector<const ManagedWindow*>& screenWindows,
                         const std::optional<WindowKey>& focused);

  WindowPlacements windowPlacements_;
  StoredChoices choices_;
  WindowPairings windowPairings_;
  VisibleWindowKeys visibleWindowKeysByScreen_;
};

}  // namespace tilora
