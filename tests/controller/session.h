// A controller at work on a simulated desktop, for the tests of this folder.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "controller/window_manager_controller.h"
#include "support/desktops.h"

namespace tilora::test {

inline constexpr const char* windowPaddingKey = "Tilora.WindowPadding";
inline constexpr const char* startOnLoginKey = "Tilora.StartOnLogin";
inline constexpr const char* shortcutBindingsKey = "Tilora.ShortcutBindings";
inline constexpr const char* placementPreferencesKey = "Tilora.AppPlacementPreferences";

/// A stored value as the settings store is told to write it.
inline simulated::Effect stored(const char* key, SettingValue value) { return simulated::SettingStored{key, std::move(value)}; }
inline simulated::Effect storedPreferences(std::string json) { return stored(placementPreferencesKey, SettingData{std::move(json)}); }

/// A laptop whose stored gap is the one that the tests of frames reckon with.
inline simulated::DesktopBuilder tiledLaptop() {
  auto builder = laptop();
  builder.setting(windowPaddingKey, gap);
  return builder;
}

/// The state of the login-item service that a controller finds.
inline std::unique_ptr<simulated::SimulatedDesktop> withLoginItem(simulated::LoginItemTraits traits) {
  auto desktop = laptop().build();
  desktop->loginItem().traits = std::move(traits);
  return desktop;
}

/// A desktop with a controller that has just been constructed.
class Session {
 public:
  explicit Session(std::unique_ptr<simulated::SimulatedDesktop> simulatedDesktop)
      : desktop_(std::move(simulatedDesktop)), controller_(std::in_place, desktop_->interfaces()) {
    observer_ = controller_->observeWillChange([this](PublishedProperty property) { changes_.push_back(property); });
  }
  explicit Session(simulated::DesktopBuilder& builder) : Session(builder.build()) {}
  explicit Session(simulated::DesktopBuilder&& builder) : Session(builder.build()) {}

  simulated::SimulatedDesktop& desktop() { return *desktop_; }
  WindowManagerController& controller() { return *controller_; }
  void destroyController() { controller_.reset(); }

  void advance(std::chrono::milliseconds duration) { desktop_->clock().advance(duration); }
  void runPosted() { desktop_->clock().runPosted(); }

  std::vector<simulated::Effect> effects() { return desktop_->takeEffects(); }
  /// The published properties that changed since the last call.
  std::vector<PublishedProperty> changes() { return std::exchange(changes_, {}); }

  /// The effects of `action` alone.
  template <class Action>
  std::vector<simulated::Effect> effectsOf(Action action) {
    effects();
    action();
    return effects();
  }
  /// What a command on the focused window does.
  std::vector<simulated::Effect> perform(ShortcutAction action) {
    return effectsOf([&] { controller_->performShortcutAction(action); });
  }

 private:
  std::unique_ptr<simulated::SimulatedDesktop> desktop_;
  std::optional<WindowManagerController> controller_;
  Subscription observer_;
  std::vector<PublishedProperty> changes_;
};

}  // namespace tilora::test
