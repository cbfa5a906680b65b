// What the tests of the engine share: small desktops, and windows with or without one.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/simulated/builder.h"
#include "windows/managed_window.h"

namespace tilora::test {

/// A screen of 1440 x 900 points with a menu bar of 25, and the gap that the tests of frames reckon with.
inline constexpr Rect laptopFrame = {0, 0, 1440, 900};
inline constexpr Rect laptopVisible = {0, 0, 1440, 875};
inline constexpr double gap = 10;

/// A desktop with that screen as its only one, as number 1.
inline simulated::DesktopBuilder laptop() {
  auto builder = simulated::desktop();
  builder.screen(1, laptopFrame, laptopVisible);
  return builder;
}

/// The same with a second screen to the right of the first, as number 2, and a frame for windows whose centre is on that one.
inline simulated::DesktopBuilder twoScreens() {
  auto builder = laptop();
  builder.screen(2, {1440, 0, 1440, 900}, {1440, 0, 1440, 875});
  return builder;
}
inline constexpr Rect onSecondScreen = {1500, 60, 400, 300};

inline Application applicationOf(simulated::SimulatedDesktop& desktop, ProcessId pid) {
  return desktop.interfaces().workspace.applicationWithProcessIdentifier(pid);
}

/// A window that an application lists, by its place in the list.
inline Element elementOf(simulated::SimulatedDesktop& desktop, ProcessId pid, std::size_t index = 0) {
  const auto value = desktop.interfaces().accessibility.applicationElement(pid)->value(AttributeName::windows);
  return std::get<std::vector<Element>>(value.value()).at(index);
}

/// The user turns to a window.
inline void focus(simulated::SimulatedDesktop& desktop, ProcessId pid, std::optional<simulated::WindowId> window) {
  desktop.setFrontmost(pid);
  desktop.setFocusedWindow(pid, window);
}

/// What was done to windows and applications since the effects were last taken.
inline std::vector<simulated::Effect> windowEffects(simulated::SimulatedDesktop& desktop) {
  auto effects = desktop.takeEffects();
  std::erase_if(effects, [](const simulated::Effect& effect) {
    return !std::holds_alternative<simulated::AttributeWritten>(effect) && !std::holds_alternative<simulated::ApplicationHidden>(effect) &&
           !std::holds_alternative<simulated::ApplicationUnhidden>(effect);
  });
  return effects;
}

/// A screen and a window that no desktop has: for the rules that only look at keys, screens and names.
inline ScreenRef screenNumbered(std::uint64_t number) { return std::make_shared<const Screen>(Screen{laptopFrame, laptopVisible, number}); }
inline ManagedWindow windowOn(const ScreenRef& screen, WindowKey key, std::string_view app = "app",
                              std::string_view identity = "role:window") {
  return {key, nullptr, screen, app, identity};
}

}  // namespace tilora::test
