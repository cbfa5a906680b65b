// When to ask for a frame, when to ask again, and when to take no for an answer.
#include "platform/x11/frame_writer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/x11/requests.h"

namespace tilora::x11 {
namespace {

/// A window that has not answered for so long will not.
constexpr auto answerTime = std::chrono::milliseconds(800);
/// So often a frame is asked for before the window's own choice stands.
constexpr int mostAttempts = 3;
/// A window that keeps changing by itself is not fought with; after so long a rest it may be asked again.
constexpr auto rest = std::chrono::seconds(2);
/// A frame that lasted so long was reached.
constexpr auto reachedTime = std::chrono::milliseconds(200);
/// X windows are placed with 16-bit coordinates.
constexpr double farthest = 32000;

/// No program of today declares a wider border.
constexpr int widestBorder = 4;

int rounded(double value) { return static_cast<int>(std::lround(std::clamp(value, -farthest, farthest))); }

int limited(int value, int least, int most) {
  if (most > 0) value = std::min(value, std::max(most, least));
  return std::max({value, least, 1});
}

/// Moves the range [start, start + extent) into [low, high), its beginning first.
int movedInto(int start, int extent, int low, int high) { return std::max(std::min(start, high - extent), low); }

/// Takes in that the request for a place was answered with another one. What is off by the border that the client once declared, which one
/// manager reckons with and others do not, is made up for by the next request. A manager that answers with real events alone has not told
/// the border: an equal and small step in both directions is taken for it. Where a maximised window is, or one that nobody asked for a
/// place, is no answer.
void learnDrift(ClientWindow& window) {
  PendingFrame& frame = window.frame;
  if (frame.attempts == 0 || window.states.maximized()) return;
  const PixelRect visible = window.visible();
  const int x = visible.x - frame.requested->x;
  const int y = visible.y - frame.requested->y;
  const bool isBorder = window.declaredBorder ? std::abs(x) == *window.declaredBorder : std::abs(x) <= widestBorder;
  // A place that stayed wrong when it was asked for again is wrong by the manager's reckoning.
  const bool persists =
      frame.mayBeOff && frame.attempts > 1 && visible.width == frame.requested->width && visible.height == frame.requested->height;
  if (frame.decoration != window.decoration || !(persists || (isBorder && x == y))) return;
  frame.driftX += x;
  frame.driftY += y;
}

/// Where the manager put the window when it left fullscreen is not the window's own choice.
void startOver(PendingFrame& frame) {
  frame.accepted.reset();
  frame.attempts = 0;
  frame.unsure = true;
  frame.mayBeOff = true;
}

/// Takes in where the manager has the window now. A frame that lasted was reached: what comes after it is somebody else's change, the
/// user's who drags the window for instance, and no answer to the request.
void follow(PendingFrame& frame, const PixelRect& visible, std::chrono::steady_clock::time_point now) {
  if (visible == frame.shown) return;
  const bool wasReached = frame.shown == frame.requested || frame.shown == frame.accepted;
  if (wasReached && now - frame.shownSince >= reachedTime) {
    frame.attempts = 0;
    frame.mayBeOff = false;
  }
  frame.shown = visible;
  frame.shownSince = now;
}

long overlap(const PixelRect& a, const PixelRect& b) {
  const PixelRect common = intersection(a, b);
  return common.isEmpty() ? 0 : static_cast<long>(common.width) * common.height;
}

}  // namespace

PixelRect roundedEdges(Point position, Size size) {
  const int left = rounded(position.x);
  const int top = rounded(position.y);
  return {left, top, rounded(position.x + size.width) - left, rounded(position.y + size.height) - top};
}

PixelRect withinLimits(const ClientWindow& window, const PixelRect& wanted, const PixelRect& area) {
  PixelRect client = clientRect(wanted, window.decoration, window.shadow);
  client.width = limited(client.width, window.limits.minWidth, window.limits.maxWidth);
  client.height = limited(client.height, window.limits.minHeight, window.limits.maxHeight);
  PixelRect visible = visibleFrame(client, window.decoration, window.shadow);
  if (visible.width > wanted.width) visible.x = movedInto(visible.x, visible.width, area.x, area.right());
  if (visible.height > wanted.height) visible.y = movedInto(visible.y, visible.height, area.y, area.bottom());
  return visible;
}

PixelRect FrameWriter::area(const PixelRect& wanted) const {
  const auto& visible = layout_.visibleFrames();
  const auto best =
      std::ranges::max_element(visible, [&](const PixelRect& a, const PixelRect& b) { return overlap(a, wanted) < overlap(b, wanted); });
  return best == visible.end() || overlap(*best, wanted) == 0 ? wanted : *best;
}

bool FrameWriter::coversAMonitor(const PixelRect& visible) const {
  return std::ranges::any_of(layout_.monitors(), [&](const Monitor& monitor) { return monitor.frame == visible; });
}

bool FrameWriter::write(ClientWindow& window, Clock::time_point now) {
  PendingFrame& frame = window.frame;
  if (!frame.position && !frame.size) return false;
  const PixelRect current = window.visible();
  const bool resize = frame.size.has_value();
  const Point position = frame.position.value_or(Point{static_cast<double>(current.x), static_cast<double>(current.y)});
  const Size size = frame.size.value_or(Size{static_cast<double>(current.width), static_cast<double>(current.height)});
  frame.position.reset();
  frame.size.reset();
  const PixelRect wanted = roundedEdges(position, size);
  const PixelRect visible =
      resize ? withinLimits(window, wanted, area(wanted)) : PixelRect{wanted.x, wanted.y, current.width, current.height};
  if (visible != frame.requested) {
    frame.accepted.reset();
    frame.attempts = 0;
    frame.wasMadeUp = false;
    if (visible == current && !window.states.maximized() && frame.answered && !frame.unsure) {
      frame.requested = visible;
      return false;
    }
    request(window, visible, now);
    return true;
  }
  if (!shouldRequest(frame, current, now)) return false;
  learnDrift(window);
  frame.unsure |= frame.attempts > 0 && (current.x != visible.x || current.y != visible.y);
  request(window, visible, now);
  return true;
}

bool FrameWriter::shouldRequest(PendingFrame& frame, const PixelRect& visible, Clock::time_point now) const {
  const bool isAsBefore = visible == frame.last;
  if (!isAsBefore) {
    frame.last = visible;
    frame.unchangedSince = now;
  }
  const auto unchanged = now - frame.unchangedSince;
  if (visible == *frame.requested || visible == frame.accepted) return false;
  if (!frame.answered && now - frame.sentAt < answerTime) return false;
  // In its place, and no more to be had by asking again: a terminal ends at a whole line.
  const bool isInPlace = visible.x == frame.requested->x && visible.y == frame.requested->y;
  if (isInPlace && frame.attempts > 1 && isAsBefore) {
    frame.accepted = visible;
    frame.attempts = 0;
    return false;
  }
  if (frame.attempts < mostAttempts) return true;
  if (unchanged < rest) return false;
  const bool mayBeOff = std::exchange(frame.mayBeOff, false);
  // What was made up for was not the reason: once more without.
  const bool isMadeUp = (frame.driftX != 0 || frame.driftY != 0) && !isInPlace;
  if (isMadeUp) frame.driftX = frame.driftY = 0;
  if (mayBeOff || (isMadeUp && !std::exchange(frame.wasMadeUp, true))) {
    frame.attempts = 0;
    return true;
  }
  frame.accepted = visible;
  return false;
}

void FrameWriter::changed(ClientWindow& window, Clock::time_point now) {
  PendingFrame& frame = window.frame;
  frame.answered = true;
  follow(frame, window.visible(), now);
  if (!window.states.fullscreen) frame.tookFullscreen = false;
  const bool leftFullscreen = std::exchange(frame.wasFullscreen, window.isFullscreen()) && !window.states.fullscreen;
  if (!frame.requested) return;
  if (leftFullscreen) startOver(frame);
  const bool recent = now - frame.sentAt < answerTime;
  frame.tookFullscreen |= window.states.fullscreen && recent && coversAMonitor(*frame.requested);
  const bool reckonedOtherwise = frame.decoration != window.decoration || frame.shadow != window.shadow;
  if (!reckonedOtherwise || !recent || window.states.maximized() || window.isFullscreen() || frame.attempts > mostAttempts) return;
  if (window.visible() == *frame.requested) return;
  request(window, *frame.requested, now);
}

void FrameWriter::request(ClientWindow& window, const PixelRect& visible, Clock::time_point now) {
  PendingFrame& frame = window.frame;
  if (window.states.maximized()) requestUnmaximize(connection_, window.id);
  if (frame.tookFullscreen) requestNotFullscreen(connection_, window.id);
  PixelRect client = clientRect(visible, window.decoration, window.shadow);
  client.x -= frame.driftX;
  client.y -= frame.driftY;
  // One pixel lower, since one less in height is none for a window that grows by whole lines.
  if (std::exchange(frame.unsure, false)) requestFrame(connection_, window.id, {client.x, client.y + 1, client.width, client.height - 1});
  requestFrame(connection_, window.id, client);
  frame.requested = visible;
  frame.decoration = window.decoration;
  frame.shadow = window.shadow;
  frame.answered = false;
  frame.sentAt = now;
  frame.last = window.visible();
  frame.unchangedSince = now;
  ++frame.attempts;
}

}  // namespace tilora::x11
