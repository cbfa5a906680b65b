// Keeps the list of screens and which of them is main.
#include "platform/simulated/simulated_screens.h"

#include <algorithm>

namespace tilora::simulated {

ScreenRef SimulatedScreens::mainScreen() {
  if (isMainSaid_) return main_ ? find(*main_) : nullptr;
  return list_.empty() ? nullptr : list_.front();
}

ScreenRef SimulatedScreens::find(ScreenId id) const {
  const auto found = std::find(ids_.begin(), ids_.end(), id);
  return found == ids_.end() ? nullptr : list_[static_cast<std::size_t>(found - ids_.begin())];
}

void SimulatedScreens::set(ScreenId id, const Screen& screen) {
  declared_.insert(id);
  auto reference = std::make_shared<const Screen>(screen);
  const auto found = std::find(ids_.begin(), ids_.end(), id);
  if (found != ids_.end()) {
    list_[static_cast<std::size_t>(found - ids_.begin())] = std::move(reference);
    return;
  }
  ids_.push_back(id);
  list_.push_back(std::move(reference));
}

void SimulatedScreens::remove(ScreenId id) {
  const auto found = std::find(ids_.begin(), ids_.end(), id);
  if (found == ids_.end()) return;
  list_.erase(list_.begin() + (found - ids_.begin()));
  ids_.erase(found);
}

void SimulatedScreens::setMain(std::optional<ScreenId> id) {
  isMainSaid_ = true;
  main_ = id;
}

}  // namespace tilora::simulated
