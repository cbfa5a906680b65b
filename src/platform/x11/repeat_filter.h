// Telling the presses that a held key repeats from those of a finger.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <unordered_map>

namespace tilora::x11 {

/// How the keyboard repeats a held key.
struct RepeatTimes {
  std::chrono::milliseconds delay{660};
  std::chrono::milliseconds interval{40};
};

/// Fed with the presses and releases of grabbed keys, on a connection with detectable auto-repeat: a held key then sends presses only, and
/// every release is that of a finger.
///
/// A passive grab ends when the key that began it is released. Another grabbed key that is down at that moment is no longer watched: its
/// release may never arrive here. The same goes for every key once the keyboard as a whole is grabbed. Its next press is a repeat only if
/// it comes when a repeat is due.
class RepeatFilter {
 public:
  /// `times` is asked for in that rare case only.
  explicit RepeatFilter(std::function<RepeatTimes()> times) : times_(std::move(times)) {}

  /// Takes note of a press; whether a finger made it.
  bool isFirstPress(xcb_keycode_t key, xcb_timestamp_t time);
  void released(xcb_keycode_t key);
  /// The grab that began with a press has been replaced by one of the whole keyboard: the release of no key that is down will arrive.
  void keyboardTaken();
  /// Every key that is not watched is up.
  void forgetUnwatched();
  bool isWatchingAll() const;

 private:
  struct Held {
    xcb_timestamp_t lastPress = 0;
    bool repeating = false;
    bool watched = true;
  };

  bool repeatIsDue(const Held& held, xcb_timestamp_t time) const;

  std::function<RepeatTimes()> times_;
  std::unordered_map<xcb_keycode_t, Held> held_;
};

}  // namespace tilora::x11
