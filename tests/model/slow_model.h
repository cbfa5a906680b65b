// What tiling does to a desktop, told a second time: plainly, slowly, and sharing no code with the engine.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop.h"

namespace tilora::model {

/// A process and a window number.
using Key = std::pair<ProcessId, std::int64_t>;
/// By the name under which a placement is stored: "full", "left", "right" or "floatCenter".
using Placement = std::string;

/// One window that tiling manages.
struct Window {
  Key key;
  Element element;
  ScreenRef screen;
  std::string application;
  std::string identity;
};

/// Works on a desktop of its own, through the interfaces alone. Nothing is kept between two passes but the five fields, and whatever a step
/// needs is read from the desktop or looked for in a list when it needs it.
class SlowModel {
 public:
  explicit SlowModel(const Desktop& desktop) : desktop_(desktop) {}

  /// One pass over the whole desktop. Does not ask for trust.
  void pass();
  /// A command on the focused window, with the pass that follows.
  void command(const Placement& placement);

  double padding = 0;
  std::map<Key, Placement> placements = {};
  std::map<std::string, Placement> preferences = {};
  std::map<Key, Key> pairings = {};
  std::map<std::string, std::set<Key>> shown = {};

 private:
  struct Focus {
    Element element;
    Key key;
    std::string application;
  };
  using Windows = std::vector<Window>;

  std::optional<Focus> focus() const;
  bool isDragged(const std::optional<Focus>& focused) const;
  Windows allWindows() const;
  Windows windowsOf(const Application& application) const;
  void nameWindows(Windows& windows) const;
  ScreenRef screenOf(const Element& element) const;
  double top() const;

  void forgetClosedWindows(const Windows& windows);
  void applyPreferences(const Windows& windows);
  void dropLonelyPairings(const Windows& windows);
  void unpair(Key key);
  void pair(Key one, Key other);
  Placement placementOf(Key key) const;

  std::set<Key> choose(const Windows& windows, const std::optional<Focus>& focused);
  std::set<Key> shownAround(Key anchor, const Windows& screenWindows);

  void layOut(const Windows& windows, const std::set<Key>& visible, const std::optional<Focus>& focused);
  void put(const Window& window, const Placement& placement);
  void moveOnly(const Window& window, const Placement& placement);
  std::optional<Size> usableSize(const Window& window) const;
  void hideApplications(const Windows& windows, const std::set<Key>& visible);
  void hideWindows(const Windows& windows, const std::set<Key>& visible);
  void savePreferences();

  Desktop desktop_;
};

}  // namespace tilora::model
