// Which screen a window is on, and the names under which screens are remembered.
#include "windows/screen_keys.h"

#include <cmath>
#include <cstdint>
#include <unordered_map>

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
  std::unordered_map<std::string, std::size_t> groupOfKey;
  std::unordered_map<const Screen*, std::size_t> groupOfScreen;
  const Screen* lastScreen = nullptr;
  std::size_t lastGroup = 0;
  for (const auto& window : windows) {
    if (window.screen.get() != lastScreen) {
      lastScreen = window.screen.get();
      auto known = groupOfScreen.find(lastScreen);
      if (known == groupOfScreen.end()) {
        const auto [group, isNew] = groupOfKey.try_emplace(screenKey(*lastScreen), groups.size());
        if (isNew) groups.push_back({group->first, {}});
        known = groupOfScreen.emplace(lastScreen, group->second).first;
      }
      lastGroup = known->second;
    }
    groups[lastGroup].windows.push_back(&window);
  }
  return groups;
}

}  // namespace tilora
