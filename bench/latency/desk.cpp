// Opening windows, pressing keys and watching what comes of it.
#include "desk.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tilora::latency {
namespace {

using harness::WindowEvent;
using std::chrono::milliseconds;

/// After a silence of this length a press has had all its effects; longer than a pass of any timer of the contestants.
constexpr milliseconds silence{300};
/// Presses wait up to so long besides, each for another time: at even intervals they would fall in step with whatever a window manager
/// does by the clock, painting one in its panel for instance.
constexpr milliseconds longestPause{300};
/// Nothing that has not begun by then is an effect of the press.
constexpr milliseconds longestReaction{2000};
/// A window that has not stopped changing by then never will.
constexpr milliseconds longestEffect{4000};

double millisecondsBetween(std::chrono::steady_clock::time_point from, std::chrono::steady_clock::time_point to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

harness::PixelRect geometryInParent(harness::Display& display, xcb_window_t window) {
  const auto cookie = xcb_get_geometry(display.xcb(), window);
  const std::unique_ptr<xcb_get_geometry_reply_t, decltype(&std::free)> reply{xcb_get_geometry_reply(display.xcb(), cookie, nullptr),
                                                                              &std::free};
  if (!reply) return {};
  return {reply->x, reply->y, reply->width, reply->height};
}

}  // namespace

xcb_window_t Desk::open() {
  auto& client = clients_.emplace_back(std::make_unique<harness::TestClient>(session_));
  const std::string name = "window" + std::to_string(++opened_);
  const xcb_window_t window = client->open({.title = name, .instance = name, .className = name});
  display_.watch(window);
  windows_.push_back(window);
  expect(name + " is shown", [&] { return display_.viewable(window); });
  return window;
}

void Desk::closeAll() {
  clients_.clear();
  windows_.clear();
  display_.sync();
}

void Desk::releaseModifiers(const Chord& chord) {
  for (const auto key : std::vector(chord.held.rbegin(), chord.held.rend())) keyboard_.release(key);
}

void Desk::press(const Chord& chord) {
  for (const auto key : chord.held) keyboard_.press(key);
  keyboard_.tap(chord.key);
  releaseModifiers(chord);
}

void Desk::expect(const std::string& what, const std::function<bool()>& holds) {
  if (!display_.waitUntil(holds)) throw Failure("it does not come true that " + what + "\n" + display_.describe());
}

bool Desk::isChange(const WindowEvent& event, Action action) {
  const bool isOurs = std::find(windows_.begin(), windows_.end(), event.window) != windows_.end();
  if (event.kind == WindowEvent::Kind::configured) {
    // Window managers tell the same again long after: that is no change.
    return isOurs && std::exchange(told_[{event.window, event.synthetic}], event.geometry) != event.geometry;
  }
  if (action == Action::move) return false;
  // A window manager may show and hide the frame around a window, or leave both and say so in a property.
  if (event.kind == WindowEvent::Kind::mapped || event.kind == WindowEvent::Kind::unmapped) return true;
  if (event.kind != WindowEvent::Kind::property || !isOurs) return false;
  return event.atom == display_.atom("WM_STATE") || event.atom == display_.atom("_NET_WM_STATE");
}

void Desk::expectFree(const std::vector<harness::Key>& keys) {
  constexpr auto altShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
  const auto isFree = [&](harness::Key key) {
    const auto keycode = static_cast<xcb_keycode_t>(key);
    const auto cookie =
        xcb_grab_key_checked(display_.xcb(), 0, display_.root(), altShift, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error{xcb_request_check(display_.xcb(), cookie), &std::free};
    xcb_ungrab_key(display_.xcb(), keycode, display_.root(), altShift);
    return error == nullptr;
  };
  const auto end = Clock::now() + longestEffect;
  while (!std::all_of(keys.begin(), keys.end(), isFree)) {
    if (Clock::now() > end) throw Failure("another client keeps the keys");
  }
  display_.sync();
}

void Desk::prepareToWatch() {
  // Asking is a round trip: not while the stopwatch runs.
  display_.atom("WM_STATE");
  display_.atom("_NET_WM_STATE");
  for (const xcb_window_t window : windows_) {
    told_[{window, true}] = display_.clientArea(window).value_or(harness::PixelRect{});
    told_[{window, false}] = geometryInParent(display_, window);
  }
}

void Desk::waitUntilQuiet() {
  const auto end = Clock::now() + longestEffect;
  std::size_t seen = display_.events().size();
  while (Clock::now() < end && display_.waitUntil([&] { return display_.events().size() > seen; }, silence))
    seen = display_.events().size();
}

void Desk::pressUntilItWorks(const Chord& chord, Action action) {
  constexpr int mostTries = 10;
  for (int i = 0; i < mostTries; ++i) {
    if (measure(chord, action)) return;
  }
  throw Failure("the keys have no effect");
}

void Desk::pause() {
  const milliseconds length{std::uniform_int_distribution<int>(0, static_cast<int>(longestPause.count()))(pauses_)};
  display_.waitUntil([] { return false; }, length);
}

std::optional<Sample> Desk::measure(const Chord& chord, Action action) {
  pause();
  prepareToWatch();
  for (const auto key : chord.held) keyboard_.press(key);
  display_.clearEvents();
  const auto start = Clock::now();
  keyboard_.press(chord.key);
  std::size_t looked = 0;
  std::optional<Sample> sample;
  const auto look = [&] {
    for (const auto& events = display_.events(); looked < events.size(); ++looked) {
      if (!isChange(events[looked], action)) continue;
      const double elapsed = millisecondsBetween(start, events[looked].time);
      if (!sample) sample = Sample{elapsed, elapsed};
      sample->last = elapsed;
    }
    return sample.has_value();
  };
  if (display_.waitUntil(look, longestReaction)) waitUntilQuiet();
  look();
  keyboard_.release(chord.key);
  releaseModifiers(chord);
  return sample;
}

}  // namespace tilora::latency
