// The calm after a storm: everything has to be there still.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "chance.h"
#include "counts.h"
#include "desk.h"
#include "population.h"

namespace tilora::chaos {

class Calm {
 public:
  /// For a desk on which Tilora runs. All must outlive it.
  Calm(Desk& desk, Population& population, Counts& counts, Chance& chance)
      : desk_(desk), population_(population), counts_(counts), chance_(chance), stormyLife_(desk.tiloraLives()) {}

  /// Lets go of everything, starts what does not run, and notes what is not as it has to be. `endsTilora`: once more after a clean end
  /// of Tilora.
  void inspect(bool endsTilora);

 private:
  void letGo();
  void cureLies();
  void reviveWindowManager();
  void takeAnotherWindowManager();
  void waitForAPass();
  void expectWorkGoesOn();
  /// Opens a window and activates it; nothing when it is not managed, listed and active then.
  std::optional<xcb_window_t> openKeeper(const std::string& name);
  bool opensAndTiles(const std::string& name);
  void closeKeepers();
  void settleClosed();
  void mapDropped();
  void expectAllCanBeBroughtBack(const std::string& when);
  bool comesBack(const Population::Reference& reference);
  bool comesBackWithAManagerThatWorks(const Population::Reference& reference);
  bool isForgottenByItsManager(const Population::Reference& reference);
  bool hasBeenEnded(const Population::Reference& reference);
  std::string describe(const Population::Reference& reference);
  /// The windows that Tilora hides on the desktop that is shown.
  std::vector<Population::Reference> hiddenHere();
  void expectCleanEnd();
  void expectSettingsAreWhole();
  void retitleOften();
  void expectHoldingsStay();

  Desk& desk_;
  Population& population_;
  Counts& counts_;
  Chance& chance_;
  /// The places given in the calm, which the settings have to hold from then on.
  std::map<std::string, std::string> placements_;
  int keepers_ = 0;
  /// How often the window manager had changed by the last inspection.
  int managerChanges_ = 0;
  /// How often in this calm a window manager was started that had ended by itself.
  int revivals_ = 0;
  /// The life of Tilora that has seen the whole storm before this calm, if it still lasts; a younger one has yet to use what it needs.
  int stormyLife_;
  /// What the Tilora of that life held after its first storm.
  int measuredLife_ = 0;
  Holdings first_;
};

}  // namespace tilora::chaos
