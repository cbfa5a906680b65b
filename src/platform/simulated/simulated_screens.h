// The screens of the simulated desktop.
#pragma once

#include <set>
#include <vector>

#include "platform/screens.h"

namespace tilora::simulated {

/// The name of a screen in tests and scripts; it has nothing to do with the screen's number.
using ScreenId = std::uint64_t;

class SimulatedScreens final : public Screens {
 public:
  const std::vector<ScreenRef>& screens() override { return list_; }
  ScreenRef mainScreen() override;

  /// Appends a screen, or replaces the values of the one of that id in place.
  void set(ScreenId id, const Screen& screen);
  /// Takes a screen off the list. It counts as declared ever after.
  void remove(ScreenId id);
  /// Which screen is main; there is none while that one is off the list. Until said, the first of the list.
  void setMain(std::optional<ScreenId> id);
  bool wasDeclared(ScreenId id) const { return declared_.contains(id); }

 private:
  ScreenRef find(ScreenId id) const;

  std::vector<ScreenRef> list_;
  /// The ids of `list_`, in its order.
  std::vector<ScreenId> ids_;
  std::set<ScreenId> declared_;
  bool isMainSaid_ = false;
  std::optional<ScreenId> main_;
};

}  // namespace tilora::simulated
