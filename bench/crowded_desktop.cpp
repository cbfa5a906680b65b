// A desktop with many windows.
#include "crowded_desktop.h"

#include <array>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/simulated/builder.h"
#include "tiling/retile.h"

namespace tilora::bench {
namespace {

constexpr Rect screenFrame = {0, 0, 1920, 1080};
constexpr double gap = 12;

constexpr std::array neededAttributes = {AttributeName::role,       AttributeName::subrole, AttributeName::minimized,
                                         AttributeName::position,   AttributeName::size,    AttributeName::windowNumber,
                                         AttributeName::identifier, AttributeName::title};

std::string bundleOf(std::size_t application) { return "com.example.application" + std::to_string(application); }

Rect frameOfScreen(std::size_t screen) {
  Rect frame = screenFrame;
  frame.x = static_cast<double>(screen) * screenFrame.width;
  return frame;
}

/// Windows lie on the screens in turn, forty of them beside each other.
Rect frameOfWindow(std::size_t window, std::size_t screens) {
  const double across = screenFrame.width * static_cast<double>(screens) - 640;
  return {static_cast<double>(window % 40) / 40 * across, 80, 640, 480};
}

std::unique_ptr<simulated::SimulatedDesktop> desktopOf(const Crowd& crowd) {
  auto builder = simulated::desktop();
  for (std::size_t i = 0; i < crowd.screens; ++i) builder.screen(i + 1, frameOfScreen(i), frameOfScreen(i));
  for (std::size_t i = 0; i < crowd.windows; ++i) {
    const std::size_t application = i / crowd.windowsPerApplication;
    if (i % crowd.windowsPerApplication == 0) builder.app(static_cast<ProcessId>(100 + application), bundleOf(application));
    builder.window(i + 1, {.title = "Document " + std::to_string(i), .frame = frameOfWindow(i, crowd.screens)});
    builder.attribute(AttributeName::minimized, false);
    if (i % 5 == 4) builder.attribute(AttributeName::identifier, "Palette " + std::to_string(i));
    builder.settable(AttributeName::hidden);
  }
  return builder.front(100, 1).build();
}

PlacementPreferences choices(const Crowd& crowd) {
  PlacementPreferences preferences;
  for (std::size_t i = 0; i < crowd.preferences; ++i) {
    preferences.emplace(placementKey(bundleOf(i / crowd.preferencesPerApplication), "title:document " + std::to_string(i)),
                        i % 2 == 0 ? WindowPlacement::left : WindowPlacement::right);
  }
  return preferences;
}

}  // namespace

CrowdedDesktop::CrowdedDesktop(const Crowd& crowd) : simulated_(desktopOf(crowd)), desktop_(simulated_->interfaces()) {
  simulated_->observeEffects([](const simulated::Effect&) {});
  memory_.setAppPlacementPreferences(choices(crowd));
  // The first pass hides what is not shown; those that follow find everything in its place.
  pass();
  pass();
}

void CrowdedDesktop::pass() { retile(desktop_, memory_, gap); }

std::size_t CrowdedDesktop::bareReads() {
  std::size_t count = 0;
  for (const auto& application : desktop_.workspace.runningApplications()) {
    const auto element = desktop_.accessibility.applicationElement(application->processIdentifier());
    const auto windows = element->value(AttributeName::windows);
    for (const auto& window : std::get<std::vector<Element>>(*windows)) {
      std::size_t readable = window->isSettable(AttributeName::position).value_or(false) ? 1 : 0;
      for (const auto name : neededAttributes) readable += window->value(name) ? 1 : 0;
      if (!application->isHidden() && window->isSettable(AttributeName::hidden)) readable += window->value(AttributeName::hidden) ? 1 : 0;
      if (readable > 0) ++count;
    }
  }
  return count;
}

}  // namespace tilora::bench
