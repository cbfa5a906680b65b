// The small parts of the simulated desktop: pointer, trust, hot keys, key monitor, login item, settings, shell.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/key_monitor.h"
#include "platform/login_item.h"
#include "platform/pointer.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/simulated/effects.h"
#include "platform/trust.h"

namespace tilora::simulated {

class SimulatedPointer final : public Pointer {
 public:
  std::uint64_t pressedButtons() override { return buttons; }

  std::uint64_t buttons = 0;
};

class SimulatedTrust final : public Trust {
 public:
  explicit SimulatedTrust(const EffectObserver& report) : report_(report) {}

  bool isProcessTrusted() override { return trusted; }
  bool isProcessTrusted(bool prompt) override;

  bool trusted = true;

 private:
  const EffectObserver& report_;
};

/// A key code and a modifier mask.
using Combination = std::pair<std::uint32_t, std::uint32_t>;

/// A combination is had once; one that another application holds cannot be had.
class SimulatedHotKeys final : public HotKeys {
 public:
  explicit SimulatedHotKeys(const EffectObserver& report) : report_(report) {}

  std::optional<Subscription> installHandler(std::function<void(std::uint32_t id)> handler) override;
  std::optional<HotKeyReference> registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) override;
  void unregisterHotKey(HotKeyReference reference) override;

  /// Whether another application holds the combination; a registration already made stays.
  void setTaken(Combination combination, bool isTaken);
  /// The user presses the combination; nothing happens when it is not registered.
  void press(Combination combination);

 private:
  struct Registration {
    std::uint32_t id;
    Combination combination;
  };

  const EffectObserver& report_;
  std::shared_ptr<std::function<void(std::uint32_t)>> handler_;
  std::set<Combination> taken_;
  std::map<HotKeyReference, Registration> registrations_;
  std::uint64_t lastReference_ = 0;
};

class SimulatedKeyMonitor final : public KeyMonitor {
 public:
  explicit SimulatedKeyMonitor(const EffectObserver& report) : report_(report) {}

  std::optional<Subscription> install(std::function<bool(const KeyEvent&)> handler) override;

  /// A key-down reaches the program's windows; answers whether a monitor swallowed it.
  bool press(const KeyEvent& event);
  std::size_t installedMonitors() const { return monitors_.size(); }

 private:
  const EffectObserver& report_;
  std::map<std::uint64_t, std::function<bool(const KeyEvent&)>> monitors_;
  std::uint64_t lastMonitor_ = 0;
};

/// How the login-item service answers. An operation that has an error fails with it and leaves the status as it is.
struct LoginItemTraits {
  LoginItemStatus status = LoginItemStatus::notRegistered;
  std::optional<std::string> registerError = {};
  std::optional<std::string> unregisterError = {};
  LoginItemStatus statusAfterRegister = LoginItemStatus::enabled;
  LoginItemStatus statusAfterUnregister = LoginItemStatus::notRegistered;
};

class SimulatedLoginItem final : public LoginItem {
 public:
  explicit SimulatedLoginItem(const EffectObserver& report) : report_(report) {}

  LoginItemStatus status() override { return traits.status; }
  std::optional<std::string> registerItem() override;
  std::optional<std::string> unregisterItem() override;

  LoginItemTraits traits;

 private:
  const EffectObserver& report_;
};

class SimulatedSettings final : public SettingsStore {
 public:
  explicit SimulatedSettings(const EffectObserver& report) : report_(report) {}

  bool contains(std::string_view key) override { return find(key) != nullptr; }
  bool boolValue(std::string_view key) override;
  double doubleValue(std::string_view key) override;
  std::optional<std::string> data(std::string_view key) override;
  std::optional<std::chrono::system_clock::time_point> date(std::string_view key) override;
  void setBool(std::string_view key, bool value) override { write(key, value); }
  void setDouble(std::string_view key, double value) override { write(key, value); }
  void setData(std::string_view key, std::string bytes) override { write(key, SettingData{std::move(bytes)}); }
  void setDate(std::string_view key, std::chrono::system_clock::time_point value) override { write(key, value); }

  /// What is stored under `key`; null: nothing.
  const SettingValue* find(std::string_view key) const;
  /// Puts a value there without the program's doing; nothing removes it.
  void put(const std::string& key, std::optional<SettingValue> value);

 private:
  void write(std::string_view key, SettingValue value);

  const EffectObserver& report_;
  std::map<std::string, SettingValue, std::less<>> values_;
};

/// One of the program's own windows as a test declares it; it counts what was asked of it.
class SimulatedOwnWindow final : public OwnWindow {
 public:
  explicit SimulatedOwnWindow(std::string windowTitle, bool keyCapable = true, bool minimized = false)
      : title_(std::move(windowTitle)), isKeyCapable_(keyCapable), isMinimized_(minimized) {}

  std::string title() const override { return title_; }
  bool canBecomeKey() const override { return isKeyCapable_; }
  bool isMinimized() const override { return isMinimized_; }
  void orderFrontRegardless() override { ++timesOrderedFront; }
  void makeKeyAndOrderFront() override { ++timesMadeKey; }

  int timesOrderedFront = 0;
  int timesMadeKey = 0;

 private:
  std::string title_;
  bool isKeyCapable_;
  bool isMinimized_;
};

/// Bringing the program to the front leaves the frontmost application as it is.
class SimulatedShell final : public Shell {
 public:
  explicit SimulatedShell(const EffectObserver& report) : report_(report) {}

  void activateSelf() override { report_(SelfActivated{}); }
  std::vector<std::shared_ptr<OwnWindow>> ownWindows() override { return windows; }
  void openURL(std::string_view url) override { report_(UrlOpened{std::string(url)}); }

  std::vector<std::shared_ptr<OwnWindow>> windows;

 private:
  const EffectObserver& report_;
};

}  // namespace tilora::simulated
