// Which press is a repeat.
#include "platform/x11/repeat_filter.h"

#include <algorithm>

namespace tilora::x11 {

bool RepeatFilter::isFirstPress(xcb_keycode_t key, xcb_timestamp_t time) {
  const auto found = held_.find(key);
  const bool first = found == held_.end() || (!found->second.watched && !repeatIsDue(found->second, time));
  held_[key] = {.lastPress = time, .repeating = !first, .watched = true};
  return first;
}

void RepeatFilter::released(xcb_keycode_t key) {
  held_.erase(key);
  keyboardTaken();
}

void RepeatFilter::keyboardTaken() {
  for (auto& [key, held] : held_) held.watched = false;
}

void RepeatFilter::forgetUnwatched() {
  std::erase_if(held_, [](const auto& entry) { return !entry.second.watched; });
}

bool RepeatFilter::isWatchingAll() const {
  return std::ranges::all_of(held_, [](const auto& entry) { return entry.second.watched; });
}

bool RepeatFilter::repeatIsDue(const Held& held, xcb_timestamp_t time) const {
  constexpr std::chrono::milliseconds tolerance{30};
  const RepeatTimes times = times_();
  // Server times are unsigned and wrap.
  const std::chrono::milliseconds since{static_cast<xcb_timestamp_t>(time - held.lastPress)};
  const auto due = held.repeating ? times.interval : times.delay;
  return since >= due - tolerance && since <= due + tolerance;
}

}  // namespace tilora::x11
