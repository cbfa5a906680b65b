// Opening windows, pressing keys and watching what comes of it.
#include "desk.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tilora::bench {
namespace {

using harness::WindowEvent;
using std::chrono::milliseconds;

/// After a silence of this length a press has had all its effects; longer than a pass of any timer of the contestants.
constexpr milliseconds silence{300};
/// Presses wait up to so long besides, each for another time: at even intervals they would fall in step with whatever a window manager
/// does by the clock, painting one in its panel for instance.
constexpr milliseconds longestPause{200};
/// A hand holds the modifiers before it presses the key; whom they wake is asleep again by then.
constexpr milliseconds holding{50};
/// Nothing that has not begun by then is an effect of the press.
constexpr milliseconds longestReaction{2000};
/// A window that has not stopped changing by then never will.
constexpr milliseconds longestEffect{4000};
/// A program with very many windows may take so long until it answers, or has all windows where it wants them.
constexpr milliseconds longestStart{30000};
constexpr std::size_t movedWindows = 4;
constexpr std::size_t otherApplications = 10;

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

harness::ManagedProcess Desk::start(std::vector<std::string> arguments, const harness::Environment& additions) {
  if (!ward_.empty()) {
    costs_.push_back(session_.home().path() / ("costs" + std::to_string(costs_.size())));
    arguments.insert(arguments.begin(), {ward_.string(), costs_.back().string()});
  }
  return session_.start(std::move(arguments), additions);
}

void Desk::opened(const std::string& name, xcb_window_t window) {
  display_.watch(window);
  windows_.push_back(window);
  expect(name + " is shown", [&] { return display_.viewable(window); });
  if (const auto frame = display_.outermost(window); watchesFrames_ && frame != XCB_WINDOW_NONE && frame != window) display_.watch(frame);
}

xcb_window_t Desk::open() {
  auto& client = clients_.emplace_back(std::make_unique<harness::TestClient>(session_));
  const std::string name = "window" + std::to_string(++opened_);
  opened(name, client->open({.title = name, .instance = name, .className = name}));
  return windows_.back();
}

void Desk::openOthers(std::size_t count) {
  while (others_.size() < otherApplications) others_.push_back(std::make_unique<harness::TestClient>(session_));
  // They ask for their place: there are window managers that look for a free one longer and longer.
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t application = i % others_.size();
    const std::string name = "application" + std::to_string(application);
    const std::string title = "window" + std::to_string(++opened_);
    opened(title, others_[application]->open({.title = title, .instance = name, .className = name, .positioned = true}));
  }
}

void Desk::openCrowd() {
  while (windows_.size() < movedWindows) open();
  if (windows_.size() < crowd_) openOthers(crowd_ - windows_.size());
}

void Desk::closeAll() {
  clients_.clear();
  others_.clear();
  windows_.clear();
  told_.clear();
  display_.sync();
}

std::size_t Desk::shownWindows() {
  const harness::PixelRect screen = display_.rootGeometry();
  return static_cast<std::size_t>(std::count_if(windows_.begin(), windows_.end(), [&](xcb_window_t window) {
    const auto area = display_.clientArea(window);
    return area && area->overlaps(screen) && display_.viewable(window);
  }));
}

void Desk::expectShown(const std::vector<xcb_window_t>& shown) {
  // Most of very many windows stay what they are: each one is waited for in its turn, and all are looked at once more at the end.
  const auto isRight = [&](xcb_window_t window) {
    return display_.iconic(window) == (std::find(shown.begin(), shown.end(), window) == shown.end());
  };
  const auto end = Clock::now() + longestStart;
  std::size_t settled = 0;
  while (Clock::now() < end) {
    const auto settle = [&] {
      while (settled < windows_.size() && isRight(windows_[settled])) ++settled;
      return settled == windows_.size();
    };
    if (display_.waitUntil(settle, longestStart) && std::all_of(windows_.begin(), windows_.end(), isRight)) return;
    settled = 0;
  }
  throw Failure("the right windows are not shown");
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

bool Desk::isOnScreen(const WindowEvent& event) { return event.geometry.overlaps(display_.rootGeometry()); }

Desk::Change Desk::changeOf(const WindowEvent& event) {
  const bool isOurs = std::find(windows_.begin(), windows_.end(), event.window) != windows_.end();
  if (event.kind == WindowEvent::Kind::configured) {
    // Window managers tell the same again long after: that is no change.
    const bool isNew = isOurs && std::exchange(told_[{event.window, event.synthetic}], event.geometry) != event.geometry;
    return isNew ? Change::place : Change::none;
  }
  // A window manager may show and hide the frame around a window, or leave both and say so in a property.
  if (event.kind == WindowEvent::Kind::mapped || event.kind == WindowEvent::Kind::unmapped) return Change::other;
  if (event.kind != WindowEvent::Kind::property || !isOurs) return Change::none;
  return event.atom == display_.atom("WM_STATE") || event.atom == display_.atom("_NET_WM_STATE") ? Change::other : Change::none;
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

void Desk::pause(milliseconds length) {
  display_.waitUntil([] { return false; }, length);
}

std::optional<Sample> Desk::measure(const Chord& chord, Action action) {
  pause(milliseconds{std::uniform_int_distribution<int>(0, static_cast<int>(longestPause.count()))(pauses_)});
  for (const auto key : chord.held) keyboard_.press(key);
  pause(holding);
  prepareToWatch();
  display_.clearEvents();
  const auto start = Clock::now();
  keyboard_.press(chord.key);
  std::size_t looked = 0;
  std::optional<Sample> sample;
  const auto look = [&] {
    for (const auto& events = display_.events(); looked < events.size(); ++looked) {
      const Change change = changeOf(events[looked]);
      if (change == Change::none || (change == Change::other && action == Action::move)) continue;
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

std::optional<Sample> Desk::measureStart(const std::function<void()>& program, const std::function<void()>& meanwhile) {
  // Longer and longer: a program that is slow to begin with is not helped by being asked all the time.
  constexpr double growth = 1.2;
  std::chrono::duration<double, std::milli> step{10};
  prepareToWatch();
  display_.rootGeometry();
  display_.clearEvents();
  const auto start = Clock::now();
  program();
  std::size_t looked = 0;
  std::optional<Sample> sample;
  double last = 0;
  const auto look = [&] {
    for (const auto& events = display_.events(); looked < events.size(); ++looked) {
      const Change change = changeOf(events[looked]);
      if (change == Change::none) continue;
      last = millisecondsBetween(start, events[looked].time);
      if (!sample && change == Change::place && isOnScreen(events[looked])) sample = Sample{last, last};
    }
    return sample.has_value();
  };
  while (!display_.waitUntil(look, meanwhile ? std::chrono::duration_cast<milliseconds>(step) : longestStart)) {
    if (Clock::now() > start + longestStart) break;
    if (meanwhile) meanwhile();
    step *= growth;
  }
  if (!sample) return sample;
  const auto isOver = [&] { return Clock::now() > start + longestStart; };
  do {
    waitUntilQuiet();
  } while (look() && display_.events().size() > looked && !isOver());
  look();
  sample->last = last;
  return sample;
}

}  // namespace tilora::bench
