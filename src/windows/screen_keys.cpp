// Which screen a window is on, and the names under which screens are remembered.
#include "windows/screen_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/checked_number.h"
#include "windows/coordinates.h"

namespace tilora {
namespace {

ScreenRef screenAt(Point point, const std::vector<ScreenRef>& screens) {
  for (const auto& screen : screens) {
    if (screen->frame.contains(point)) return screen;
  }
  return nullptr;
}

/// The group of a screen's windows, which is a new one if there is none.
ScreenGroup& groupOf(const ScreenRef& screen, std::vector<ScreenGroup>& groups) {
  const auto isOnScreen = [&](const ScreenGroup& group) { return group.windows.front()->screen == screen; };
  if (const auto found = std::find_if(groups.begin(), groups.end(), isOnScreen); found != groups.end()) return *found;
  auto key = screenKey(*screen);
  const auto hasKey = [&](const ScreenGroup& group) { return group.key == key; };
  if (const auto found = std::find_if(groups.begin(), groups.end(), hasKey); found != groups.end()) return *found;
  groups.push_back({std::move(key), {}});
  return groups.back();
}

}  // namespace

WindowScreens::WindowScreens(Screens& screens) : screens_(screens), all_(screens.screens()), top_(topEdge(all_)) {}

ScreenRef WindowScreens::of(const AccessibilityElement& window) const {
  const auto position = readPoint(window, AttributeName::position);
  const auto size = readSize(window, AttributeName::size);
  if (position && size) {
    const Rect rect = screenRect({position->x, position->y, size->width, size->height}, top_);
    if (auto screen = screenAt({rect.midX(), rect.midY()}, all_)) return screen;
  }
  if (auto main = screens_.mainScreen()) return main;
  return all_.empty() ? nullptr : all_.front();
}

ScreenRef screenOf(const AccessibilityElement& window, Screens& screens) { return WindowScreens(screens).of(window); }

std::string screenKey(const Screen& screen) {
  if (screen.number) return "display:" + std::to_string(static_cast<std::uint32_t>(*screen.number));
  const double left = std::floor(screen.frame.minX());
  const double bottom = std::floor(screen.frame.minY());
  std::string key = "frame:";
  key += std::to_string(checkedWholeNumber(left)) + ':';
  key += std::to_string(checkedWholeNumber(bottom)) + ':';
  key += std::to_string(checkedWholeNumber(std::ceil(screen.frame.maxX()) - left)) + ':';
  key += std::to_string(checkedWholeNumber(std::ceil(screen.frame.maxY()) - bottom));
  return key;
}

std::vector<ScreenGroup> groupByScreen(const std::vector<ManagedWindow>& windows) {
  std::vector<ScreenGroup> groups;
  for (const auto& window : windows) groupOf(window.screen, groups).windows.push_back(&window);
  return groups;
}

}  // namespace tilora
