// The placements that the user chose, as they are stored, and the short way to those of one application.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "tiling/placement.h"
#include "tiling/text_map.h"

namespace tilora {

/// Choices by placement key, or by application for all its windows; in the order in which they are stored.
using PlacementPreferences = std::map<std::string, WindowPlacement, std::less<>>;

/// The name under which the choice for one kind of window of an application is remembered.
std::string placementKey(std::string_view appIdentifier, std::string_view windowIdentity);

/// All choices. Those of one application are found in constant time, however many there are.
class StoredChoices {
  /// Those whose keys have the same text before the first separator.
  struct Group {
    std::optional<WindowPlacement> whole;
    /// By what follows the separator; the texts are those of the stored keys.
    std::unordered_map<std::string_view, WindowPlacement> byIdentity;
  };

 public:
  explicit StoredChoices(PlacementPreferences all = {});
  StoredChoices(StoredChoices&&) = default;
  StoredChoices& operator=(StoredChoices&&) = default;
  // A copy's groups would hold texts of the original.
  StoredChoices(const StoredChoices&) = delete;
  StoredChoices& operator=(const StoredChoices&) = delete;
  ~StoredChoices() = default;

  const PlacementPreferences& all() const { return all_; }

  /// Remembers the choice for one kind of window of an application, in place of a choice for the whole application.
  void remember(std::string_view appIdentifier, std::string_view windowIdentity, WindowPlacement placement);

  /// The choices for the windows of one application.
  class OfApplication {
   public:
    /// Whether one of them is for some kind of window, so that the identities of the windows matter.
    bool haveIdentities() const;
    /// The choice for a window, in whichever form it was stored. A window may go without identity where identities do not matter.
    std::optional<WindowPlacement> placementFor(std::string_view windowIdentity) const;

   private:
    friend StoredChoices;
    OfApplication(const StoredChoices& choices, std::string_view appIdentifier);

    std::optional<WindowPlacement> forWhole() const;
    std::optional<WindowPlacement> forIdentity(std::string_view windowIdentity) const;

    const PlacementPreferences* all_;
    std::string_view appIdentifier_;
    /// Null: there is none, or the application has no group to itself.
    const Group* group_ = nullptr;
    bool hasOwnGroup_;
  };

  /// Valid until the choices change, and no longer than the text of the identifier.
  OfApplication of(std::string_view appIdentifier) const { return {*this, appIdentifier}; }

 private:
  void add(std::string_view key, WindowPlacement placement);
  void forget(std::string_view key);

  PlacementPreferences all_;
  TextMap<Group> groups_;
};

}  // namespace tilora
