// The rules of tiling, one after the other.
#include "model/slow_model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <variant>

namespace tilora::model {
namespace {

// Reading attributes.

template <class Value>
std::optional<Value> read(const Element& element, AttributeName name) {
  const auto value = element->value(name);
  if (!value || !std::holds_alternative<Value>(*value)) return std::nullopt;
  return std::get<Value>(*value);
}

/// Truth values are numbers too.
std::optional<Number> readNumber(const Element& element, AttributeName name) {
  if (const auto truth = read<bool>(element, name)) return Number(std::int64_t{*truth ? 1 : 0});
  return read<Number>(element, name);
}

std::int64_t windowNumber(const Element& element) {
  if (const auto number = readNumber(element, AttributeName::windowNumber)) return number->toInteger();
  return static_cast<std::int64_t>(element->hash());
}

bool isSettable(const Element& element, AttributeName name) { return element->isSettable(name).value_or(false); }

bool isEligible(const Element& element) {
  if (read<std::string>(element, AttributeName::role) != "AXWindow") return false;
  if (read<std::string>(element, AttributeName::subrole).value_or("AXStandardWindow") != "AXStandardWindow") return false;
  const auto minimized = readNumber(element, AttributeName::minimized);
  if (minimized && minimized->toBool()) return false;
  return isSettable(element, AttributeName::position);
}

// Texts.

constexpr std::array<std::string_view, 10> blanks{" ", "\t", "\n", "\r", "\v", "\f", "\u00a0", "\u2003", "\u2029", "\u3000"};

std::string trimmed(std::string text) {
  for (bool again = true; again;) {
    again = false;
    for (const auto blank : blanks) {
      if (text.starts_with(blank)) {
        text.erase(0, blank.size());
        again = true;
      }
      if (text.ends_with(blank)) {
        text.erase(text.size() - blank.size());
        again = true;
      }
    }
  }
  return text;
}

constexpr std::array<std::pair<std::string_view, std::string_view>, 3> letters{{{"É", "é"}, {"Ж", "ж"}, {"Ω", "ω"}}};

std::string lowered(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  for (const auto& [upper, lower] : letters) {
    for (auto at = text.find(upper); at != std::string::npos; at = text.find(upper)) text.replace(at, upper.size(), lower);
  }
  return text;
}

std::string normalised(const std::string& text) {
  const auto result = lowered(trimmed(text));
  return result.empty() ? "<empty>" : result;
}

std::string title(const Element& element) {
  const auto text = trimmed(read<std::string>(element, AttributeName::title).value_or(""));
  return text.empty() ? "<untitled>" : text;
}

std::optional<std::string> identifier(const Element& element) {
  const auto text = trimmed(read<std::string>(element, AttributeName::identifier).value_or(""));
  if (text.empty()) return std::nullopt;
  return normalised(text);
}

std::string roleKey(const Element& element) {
  const auto role = read<std::string>(element, AttributeName::role).value_or("AXWindow");
  const auto subrole = read<std::string>(element, AttributeName::subrole).value_or("<none>");
  return normalised(role) + "||" + normalised(subrole);
}

std::string applicationName(const RunningApplication& application) {
  if (!application.bundleIdentifier().value_or("").empty()) return *application.bundleIdentifier();
  if (!application.localizedName().value_or("").empty()) return *application.localizedName();
  return "pid:" + std::to_string(application.processIdentifier());
}

std::string screenName(const Screen& screen) {
  if (screen.number) return "display:" + std::to_string(static_cast<std::uint32_t>(*screen.number));
  const auto whole = [](double value) { return std::to_string(static_cast<std::int64_t>(value)); };
  const double left = std::floor(screen.frame.x);
  const double bottom = std::floor(screen.frame.y);
  const double right = std::ceil(screen.frame.x + screen.frame.width);
  const double up = std::ceil(screen.frame.y + screen.frame.height);
  return "frame:" + whole(left) + ":" + whole(bottom) + ":" + whole(right - left) + ":" + whole(up - bottom);
}

// Frames.

Rect paddedArea(const Screen& screen, double padding) {
  const Rect& visible = screen.visibleFrame;
  return {visible.x + padding, visible.y + padding, visible.width - 2 * padding, visible.height - 2 * padding};
}

Rect frameOf(const Placement& placement, const Screen& screen, double padding) {
  const Rect area = paddedArea(screen, padding);
  if (placement == "full") return area;
  if (placement == "floatCenter") {
    const double width = std::max(1.0, area.width * 0.6);
    const double height = std::max(1.0, area.height * 0.9);
    return {area.x + area.width * 0.5 - width * 0.5, area.y + area.height * 0.5 - height * 0.5, width, height};
  }
  const double half = std::max(1.0, area.width * 0.5 - padding * 0.5);
  return {placement == "left" ? area.x : area.x + area.width - half, area.y, half, area.height};
}

/// Where something of `length`, centred on `centre`, begins when it is kept between two bounds.
double begin(double low, double high, double centre, double length) {
  const double last = high - length;
  if (low > last) return low;
  return std::max(low, std::min(last, centre - length * 0.5));
}

std::optional<Rect> fittedFrame(const Placement& placement, const Screen& screen, double padding, Size size) {
  const Rect area = paddedArea(screen, padding);
  const Rect target = frameOf(placement, screen, padding);
  const double width = std::min(area.width, size.width);
  const double height = std::min(area.height, size.height);
  if (width <= 0 || height <= 0) return std::nullopt;
  return Rect{begin(area.x, area.x + area.width, target.x + target.width * 0.5, width),
              begin(area.y, area.y + area.height, target.y + target.height * 0.5, height), width, height};
}

// Lists.

bool isPlacedInHalf(const Placement& placement) { return placement == "left" || placement == "right"; }
Placement opposite(const Placement& placement) { return placement == "left" ? "right" : "left"; }

std::set<Key> keysOf(const std::vector<Window>& windows) {
  std::set<Key> keys;
  for (const auto& window : windows) keys.insert(window.key);
  return keys;
}

std::size_t countOf(ProcessId pid, const std::vector<Window>& windows) {
  return static_cast<std::size_t>(std::ranges::count_if(windows, [&](const Window& window) { return window.key.first == pid; }));
}

bool isWanted(ProcessId pid, const std::vector<Window>& windows, const std::set<Key>& visible) {
  return std::ranges::any_of(windows, [&](const Window& window) { return window.key.first == pid && visible.contains(window.key); });
}

}  // namespace

void SlowModel::pass() {
  const auto focused = focus();
  if (isDragged(focused)) return;
  if (focused && !isEligible(focused->element)) return;

  const auto windows = allWindows();
  forgetClosedWindows(windows);
  applyPreferences(windows);
  dropLonelyPairings(windows);
  const auto visible = choose(windows, focused);
  layOut(windows, visible, focused);
  hideApplications(windows, visible);
  hideWindows(windows, visible);
}

void SlowModel::command(const Placement& placement) {
  if (!desktop_.trust.isProcessTrusted()) return;
  const auto focused = focus();
  if (!focused || !isEligible(focused->element)) return;
  placements[focused->key] = placement;

  Window target{focused->key, focused->element, nullptr, focused->application, "title:" + normalised(title(focused->element))};
  if (const auto application = desktop_.workspace.applicationWithProcessIdentifier(focused->key.first)) {
    const auto windows = windowsOf(application);
    const auto found = std::ranges::find(windows, focused->key, &Window::key);
    if (found != windows.end()) {
      target.screen = found->screen;
      target.identity = found->identity;
    }
  }
  preferences.erase(target.application);
  preferences[target.application + "||" + target.identity] = placement;
  savePreferences();

  if (placement == "floatCenter") {
    if (!target.screen) target.screen = screenOf(target.element);
    if (target.screen) put(target, placement);
  }
  pass();
}

std::optional<SlowModel::Focus> SlowModel::focus() const {
  const auto application = desktop_.workspace.frontmostApplication();
  if (!application || application->processIdentifier() == desktop_.ownProcessId) return std::nullopt;
  const auto pid = application->processIdentifier();
  const auto element = read<Element>(desktop_.accessibility.applicationElement(pid), AttributeName::focusedWindow);
  if (!element) return std::nullopt;
  return Focus{*element, {pid, windowNumber(*element)}, applicationName(*application)};
}

bool SlowModel::isDragged(const std::optional<Focus>& focused) const {
  const bool isPressed = desktop_.pointer.pressedButtons() % 2 == 1;
  return isPressed && focused && isEligible(focused->element) && placementOf(focused->key) != "floatCenter";
}

SlowModel::Windows SlowModel::allWindows() const {
  Windows all;
  for (const auto& application : desktop_.workspace.runningApplications()) {
    if (application->activationPolicy() != ActivationPolicy::regular || application->isTerminated()) continue;
    if (application->processIdentifier() == desktop_.ownProcessId) continue;
    for (const auto& window : windowsOf(application)) all.push_back(window);
  }
  return all;
}

SlowModel::Windows SlowModel::windowsOf(const Application& application) const {
  const auto pid = application->processIdentifier();
  const auto listed = read<std::vector<Element>>(desktop_.accessibility.applicationElement(pid), AttributeName::windows);
  Windows windows;
  for (const auto& element : listed.value_or(std::vector<Element>{})) {
    const auto screen = screenOf(element);
    if (isEligible(element) && screen)
      windows.push_back({{pid, windowNumber(element)}, element, screen, applicationName(*application), ""});
  }
  nameWindows(windows);
  return windows;
}

void SlowModel::nameWindows(Windows& windows) const {
  std::map<Key, std::string> names;
  for (const auto& window : windows) {
    const auto ofItsRole = std::ranges::count_if(
        windows, [&](const Window& other) { return !identifier(other.element) && roleKey(other.element) == roleKey(window.element); });
    if (const auto ownName = identifier(window.element)) {
      names[window.key] = "axid:" + *ownName;
    } else if (ofItsRole >= 2) {
      names[window.key] = "title:" + normalised(title(window.element));
    } else {
      names[window.key] = "role:" + roleKey(window.element);
    }
  }
  for (auto& window : windows) window.identity = names[window.key];
}

ScreenRef SlowModel::screenOf(const Element& element) const {
  const auto& screens = desktop_.screens.screens();
  const auto position = read<Point>(element, AttributeName::position);
  const auto size = read<Size>(element, AttributeName::size);
  if (position && size) {
    const double x = position->x + size->width * 0.5;
    const double y = top() - (position->y + size->height) + size->height * 0.5;
    for (const auto& screen : screens) {
      const Rect& frame = screen->frame;
      if (x >= frame.x && x < frame.x + frame.width && y >= frame.y && y < frame.y + frame.height) return screen;
    }
  }
  if (auto main = desktop_.screens.mainScreen()) return main;
  return screens.empty() ? nullptr : screens.front();
}

double SlowModel::top() const {
  if (desktop_.screens.screens().empty()) return 0;
  double highest = -std::numeric_limits<double>::infinity();
  for (const auto& screen : desktop_.screens.screens()) highest = std::max(highest, screen->frame.y + screen->frame.height);
  return highest;
}

void SlowModel::forgetClosedWindows(const Windows& windows) {
  const auto live = keysOf(windows);
  std::erase_if(placements, [&](const auto& entry) { return !live.contains(entry.first); });
  const auto before = pairings;
  std::erase_if(pairings, [&](const auto& entry) {
    const auto& [one, other] = entry;
    const bool isMutual = before.contains(other) && before.at(other) == one;
    return !live.contains(one) || !live.contains(other) || one == other || !isMutual;
  });
}

void SlowModel::applyPreferences(const Windows& windows) {
  for (const auto& window : windows) {
    const auto full = window.application + "||" + window.identity;
    const auto older = window.application + "||" + window.identity.substr(std::min(window.identity.size(), std::string("title:").size()));
    if (preferences.contains(full)) {
      placements[window.key] = preferences[full];
    } else if (window.identity.starts_with("title:") && preferences.contains(older)) {
      placements[window.key] = preferences[older];
    } else if (preferences.contains(window.application)) {
      placements[window.key] = preferences[window.application];
    }
  }
}

void SlowModel::dropLonelyPairings(const Windows& windows) {
  for (const auto& key : keysOf(windows)) {
    if (!isPlacedInHalf(placementOf(key))) unpair(key);
  }
}

void SlowModel::unpair(Key key) {
  if (!pairings.contains(key)) return;
  const auto partner = pairings[key];
  pairings.erase(key);
  if (pairings.contains(partner) && pairings[partner] == key) pairings.erase(partner);
}

void SlowModel::pair(Key one, Key other) {
  if (one == other) return;
  unpair(one);
  unpair(other);
  pairings[one] = other;
  pairings[other] = one;
}

Placement SlowModel::placementOf(Key key) const { return placements.contains(key) ? placements.at(key) : "full"; }

std::set<Key> SlowModel::choose(const Windows& windows, const std::optional<Focus>& focused) {
  // Any order of the screens would do; it is noticed only where windows of one key are on two of them.
  std::vector<std::string> names;
  std::map<std::string, Windows> onScreens;
  for (const auto& window : windows) {
    names.push_back(screenName(*window.screen));
    onScreens[names.back()].push_back(window);
  }

  std::set<Key> all;
  std::map<std::string, std::set<Key>> nowShown;
  for (const auto& name : names) {
    if (nowShown.contains(name)) continue;
    const auto& screenWindows = onScreens[name];
    const auto keys = keysOf(screenWindows);
    std::set<Key> remembered;
    for (const auto& key : shown[name]) {
      if (keys.contains(key)) remembered.insert(key);
    }
    if (focused && keys.contains(focused->key)) {
      nowShown[name] = shownAround(focused->key, screenWindows);
    } else if (!remembered.empty()) {
      nowShown[name] = remembered;
    } else {
      nowShown[name] = shownAround(screenWindows.front().key, screenWindows);
    }
    all.insert(nowShown[name].begin(), nowShown[name].end());
  }
  shown = nowShown;
  return all;
}

std::set<Key> SlowModel::shownAround(Key anchor, const Windows& screenWindows) {
  const auto placement = placementOf(anchor);
  if (!isPlacedInHalf(placement)) {
    unpair(anchor);
    return {anchor};
  }
  std::vector<Window> candidates;
  for (const auto& window : screenWindows) {
    if (window.key != anchor && placementOf(window.key) == opposite(placement)) candidates.push_back(window);
  }
  if (pairings.contains(anchor) && keysOf(candidates).contains(pairings[anchor])) return {anchor, pairings[anchor]};
  if (candidates.empty()) {
    unpair(anchor);
    return {anchor};
  }
  const auto ownScreen = std::ranges::find(screenWindows, anchor, &Window::key)->screen;
  auto partner = std::ranges::find(candidates, ownScreen, &Window::screen);
  if (partner == candidates.end()) partner = candidates.begin();
  pair(anchor, partner->key);
  return {anchor, partner->key};
}

void SlowModel::layOut(const Windows& windows, const std::set<Key>& visible, const std::optional<Focus>& focused) {
  for (const auto& window : windows) {
    if (!visible.contains(window.key)) continue;
    const bool isFocused = focused && focused->key == window.key;
    if (countOf(window.key.first, windows) >= 2 && !isFocused) continue;
    if (placementOf(window.key) != "floatCenter") put(window, placementOf(window.key));
  }
}

void SlowModel::put(const Window& window, const Placement& placement) {
  if (!isSettable(window.element, AttributeName::size)) {
    moveOnly(window, placement);
    return;
  }
  const Rect frame = frameOf(placement, *window.screen, padding);
  const auto origin = desktop_.accessibility.boxed(Point{frame.x, top() - (frame.y + frame.height)});
  const auto size = desktop_.accessibility.boxed(Size{frame.width, frame.height});
  if (!origin || !size) return;
  window.element->set(AttributeName::position, *origin);
  window.element->set(AttributeName::size, *size);
}

void SlowModel::moveOnly(const Window& window, const Placement& placement) {
  const auto size = usableSize(window);
  if (!size) return;
  const auto frame = fittedFrame(placement, *window.screen, padding, *size);
  if (!frame) return;
  const auto origin = desktop_.accessibility.boxed(Point{frame->x, top() - (frame->y + frame->height)});
  if (origin) window.element->set(AttributeName::position, *origin);
}

std::optional<Size> SlowModel::usableSize(const Window& window) const {
  const auto size = read<Size>(window.element, AttributeName::size);
  if (size && size->width > 0 && size->height > 0) return size;
  const auto entries = desktop_.windowServer.entries(static_cast<std::uint32_t>(window.key.second));
  if (!entries.empty() && entries.front().ownerPid.value_or(window.key.first) == window.key.first && entries.front().bounds) {
    const Size bounds{std::abs(entries.front().bounds->width), std::abs(entries.front().bounds->height)};
    if (bounds.width > 0 && bounds.height > 0) return bounds;
  }
  if (size && read<Point>(window.element, AttributeName::position) && size->width != 0 && size->height != 0) return size;
  return std::nullopt;
}

void SlowModel::hideApplications(const Windows& windows, const std::set<Key>& visible) {
  std::set<ProcessId> processes;
  for (const auto& window : windows) processes.insert(window.key.first);
  for (const auto pid : processes) {
    const auto application = desktop_.workspace.applicationWithProcessIdentifier(pid);
    if (!application) continue;
    const bool wanted = isWanted(pid, windows, visible);
    if (wanted && application->isHidden()) application->unhide();
    if (!wanted && !application->isHidden()) application->hide();
  }
}

void SlowModel::hideWindows(const Windows& windows, const std::set<Key>& visible) {
  for (const auto& window : windows) {
    if (!isWanted(window.key.first, windows, visible)) continue;
    if (!isSettable(window.element, AttributeName::hidden)) continue;
    const auto state = readNumber(window.element, AttributeName::hidden);
    if (visible.contains(window.key)) {
      const bool isShown = state && !state->toBool();
      if (!isShown) window.element->set(AttributeName::hidden, false);
    } else {
      const bool isHidden = state && state->toBool();
      if (!isHidden) window.element->set(AttributeName::hidden, true);
    }
  }
}

void SlowModel::savePreferences() { desktop_.settings.setData("Tilora.AppPlacementPreferences", nlohmann::json(preferences).dump()); }

}  // namespace tilora::model
