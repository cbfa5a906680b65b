// The iconic state of one window: requested, stored, seen.
#include "platform/x11/hide_writer.h"

#include <utility>

#include "platform/x11/requests.h"

namespace tilora::x11 {
namespace {

constexpr auto longestChange = std::chrono::seconds(1);
/// So often a restore is asked for before the window counts as iconic by somebody else's wish.
constexpr int mostRestoreAttempts = 3;

bool isOverdue(const ClientWindow& window, HideWriter::Clock::time_point now) { return now - window.iconRequestedAt >= longestChange; }

}  // namespace

bool HideWriter::isToBeRestored(const ClientWindow& window) {
  if (window.marks.any() || window.iconRequest == IconRequest::restore) return false;
  return window.storedMarks.any() && (window.states.hidden || window.iconRequest == IconRequest::iconify);
}

bool HideWriter::activates(const ClientWindow& window, const WindowManagerTraits& traits) {
  const bool isStillMapped = window.iconRequest == IconRequest::iconify || window.refusesHiding || window.mapIsNoRequest;
  return traits.restore == RestoreMethod::activate || window.restoreAttempts > 0 || isStillMapped;
}

void HideWriter::restore(ClientWindow& window, const WindowManagerTraits& traits, xcb_timestamp_t time, Clock::time_point now) {
  if (activates(window, traits)) {
    requestActivation(connection_, window.id, time);
  } else {
    xcb_map_window(connection_.xcb(), window.id);
  }
  window.iconifyIsUnseen = window.iconRequest == IconRequest::iconify;
  window.iconRequest = IconRequest::restore;
  window.iconRequestedAt = now;
  ++window.restoreAttempts;
  storeMarks(window);
}

bool HideWriter::isToBeHidden(const ClientWindow& window) {
  if (!window.marks.any() || window.iconRequest == IconRequest::iconify) return false;
  return !window.states.hidden || window.iconRequest == IconRequest::restore;
}

void HideWriter::hide(ClientWindow& window, Clock::time_point now) {
  storeMarks(window);
  requestIconify(connection_, window.id);
  window.iconRequest = IconRequest::iconify;
  window.iconRequestedAt = now;
  window.iconifyIsOverdue = false;
}

void HideWriter::storeMarks(ClientWindow& window) {
  if (window.marks == window.storedMarks) return;
  const xcb_atom_t atom = connection_.atoms()._TILORA_HIDDEN;
  if (window.marks.any()) {
    const std::uint32_t mask = window.marks.mask();
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, window.id, atom, XCB_ATOM_CARDINAL, 32, 1, &mask);
  } else {
    xcb_delete_property(connection_.xcb(), window.id, atom);
  }
  window.storedMarks = window.marks;
}

void HideWriter::adopt(ClientWindow& window) {
  if (!window.storedMarks.any()) return;
  if (window.states.hidden) window.marks = window.storedMarks;
  storeMarks(window);
}

bool HideWriter::settle(ClientWindow& window) {
  if (window.states.hidden) {
    if (window.iconRequest == IconRequest::iconify) window.iconRequest = IconRequest::none;
    window.iconifyIsUnseen = false;
    // What seemed to be a refusal was a manager that took its time.
    if (std::exchange(window.refusesHiding, false)) {
      (window.isNormal() ? window.marks.window : window.marks.application) = true;
      storeMarks(window);
    }
    return false;
  }
  if (window.iconRequest == IconRequest::restore && !window.iconifyIsUnseen) {
    window.iconRequest = IconRequest::none;
    window.restoreAttempts = 0;
  }
  if (window.iconRequest == IconRequest::iconify || window.refusesHiding || !window.storedMarks.any()) return false;
  window.marks = {};
  storeMarks(window);
  return true;
}

bool HideWriter::waitsLonger(ClientWindow& window, Clock::time_point now) {
  if (window.iconRequest != IconRequest::iconify || window.states.hidden || !isOverdue(window, now)) return false;
  if (std::exchange(window.iconifyIsOverdue, true)) return false;
  window.iconRequestedAt = now;
  return true;
}

void HideWriter::repeat(ClientWindow& window, Clock::time_point now) {
  if (window.iconRequest != IconRequest::iconify || window.states.hidden || !window.iconifyIsOverdue || !window.marks.any()) return;
  requestIconify(connection_, window.id);
  window.iconRequestedAt = now;
}

bool HideWriter::expire(ClientWindow& window, Clock::time_point now) {
  if (window.iconRequest == IconRequest::none || !isOverdue(window, now)) return false;
  window.iconifyIsUnseen = false;
  if (window.iconRequest == IconRequest::iconify) {
    window.iconRequest = IconRequest::none;
    if (window.states.hidden) return false;
    window.refusesHiding = true;
    // The stored mark stays: a manager that only takes its time may hide the window when this program is no longer there to see it.
    window.marks = {};
    return true;
  }
  window.iconRequest = IconRequest::none;
  if (!window.states.hidden || window.restoreAttempts >= mostRestoreAttempts) {
    window.restoreAttempts = 0;
    return true;
  }
  // The mark stands again, so that the next transaction restores it once more, and so that it is found after a crash.
  const HideMarks wanted = window.marks;
  window.marks.window = true;
  storeMarks(window);
  window.marks = wanted;
  return true;
}

void HideWriter::forgetRequests(ClientWindow& window) {
  window.iconRequest = IconRequest::none;
  window.iconifyIsUnseen = false;
  window.restoreAttempts = 0;
  window.refusesHiding = false;
}

}  // namespace tilora::x11
