// The order of a transaction.
#include "platform/x11/window_changes.h"

#include <algorithm>
#include <utility>

namespace tilora::x11 {

void WindowChanges::written(const ClientWindowRef& window) {
  if (std::ranges::find(written_, window) == written_.end()) written_.push_back(window);
}

bool WindowChanges::commit() {
  if (written_.empty()) return false;
  std::erase_if(written_, [](const ClientWindowRef& window) { return window->isGone; });
  const WindowManagerTraits traits = traitsOf(model_.facts().windowManagerName);
  bool asked = false;
  for (const auto& window : written_) asked |= frames_.write(*window);
  const auto restored = takeRestorable(traits);
  const xcb_timestamp_t time = restored.empty() ? XCB_CURRENT_TIME : clock_.now();
  if (!restored.empty()) focus_.hold(restored, traits);
  for (const auto& window : restored) hides_.restore(*window, traits, time);
  asked |= !restored.empty();
  std::vector<ClientWindowRef> waiting;
  for (const auto& window : written_) {
    if (HideWriter::isToBeHidden(*window)) {
      hides_.hide(*window);
      asked = true;
    } else if (HideWriter::isToBeRestored(*window) && !followsItsParent(*window)) {
      waiting.push_back(window);
    } else {
      hides_.storeMarks(*window);
    }
  }
  written_ = std::move(waiting);
  if (!restored.empty()) focus_.giveBack(traits);
  connection_.flush();
  return asked;
}

bool WindowChanges::followsItsParent(const ClientWindow& window) const {
  const auto parent = window.isTransient() ? model_.find(window.transientFor) : nullptr;
  return parent && parent->marks.any();
}

bool WindowChanges::waitsForItsParent(const ClientWindow& window) const {
  const auto parent = window.isTransient() ? model_.find(window.transientFor) : nullptr;
  return parent && parent->isSettling();
}

std::vector<ClientWindowRef> WindowChanges::takeRestorable(const WindowManagerTraits& traits) {
  std::vector<ClientWindowRef> windows;
  for (const auto& window : written_) {
    if (followsItsParent(*window) || waitsForItsParent(*window)) continue;
    const bool canBe = window->isOn(model_.facts().currentDesktop) ||
                       (traits.restore == RestoreMethod::map && traits.elsewhere == RestoreElsewhere::inPlace);
    if (HideWriter::isToBeRestored(*window) && canBe) windows.push_back(window);
  }
  // The one used last is restored last, since the last one is on top.
  std::ranges::stable_sort(windows, {}, [](const ClientWindowRef& window) { return window->focusSerial; });
  return windows;
}

}  // namespace tilora::x11
