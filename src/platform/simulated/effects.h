// What a program did to the simulated desktop, in the order in which it did it.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <variant>

#include "platform/accessibility.h"
#include "platform/setting_value.h"

namespace tilora::simulated {

/// The name of a window in tests and scripts; it has nothing to do with the window's number.
using WindowId = std::uint64_t;

/// An attribute was written, also when the window stored nothing of it. Points have a top-left origin.
struct AttributeWritten {
  WindowId window = 0;
  AttributeName name = AttributeName::position;
  std::variant<bool, Point, Size> value;

  bool operator==(const AttributeWritten&) const = default;
};

struct ApplicationHidden {
  ProcessId pid = 0;

  bool operator==(const ApplicationHidden&) const = default;
};

struct ApplicationUnhidden {
  ProcessId pid = 0;

  bool operator==(const ApplicationUnhidden&) const = default;
};

struct SettingStored {
  std::string key;
  SettingValue value;

  bool operator==(const SettingStored&) const = default;
};

/// A registration was asked for, also when it failed.
struct HotKeyRegistered {
  std::uint32_t id = 0;
  std::uint32_t keyCode = 0;
  std::uint32_t modifiers = 0;
  bool registered = false;

  bool operator==(const HotKeyRegistered&) const = default;
};

/// A registration was given back; `id` is the one it was made with.
struct HotKeyUnregistered {
  std::uint32_t id = 0;

  bool operator==(const HotKeyUnregistered&) const = default;
};

struct LoginItemRegistered {
  bool ok = false;

  bool operator==(const LoginItemRegistered&) const = default;
};

struct LoginItemUnregistered {
  bool ok = false;

  bool operator==(const LoginItemUnregistered&) const = default;
};

/// The trust query that may ask the user was made; the plain query leaves no trace.
struct TrustRequested {
  bool prompt = false;

  bool operator==(const TrustRequested&) const = default;
};

struct SelfActivated {
  bool operator==(const SelfActivated&) const = default;
};

struct UrlOpened {
  std::string url;

  bool operator==(const UrlOpened&) const = default;
};

struct KeyMonitorInstalled {
  bool operator==(const KeyMonitorInstalled&) const = default;
};

struct KeyMonitorRemoved {
  bool operator==(const KeyMonitorRemoved&) const = default;
};

using Effect = std::variant<AttributeWritten, ApplicationHidden, ApplicationUnhidden, SettingStored, HotKeyRegistered, HotKeyUnregistered,
                            LoginItemRegistered, LoginItemUnregistered, TrustRequested, SelfActivated, UrlOpened, KeyMonitorInstalled,
                            KeyMonitorRemoved>;

using EffectObserver = std::function<void(const Effect&)>;

/// One line for a person: `setAttribute 1 AXPosition (10, 35)`.
std::ostream& operator<<(std::ostream& out, const Effect& effect);

}  // namespace tilora::simulated
