// The name of one live window during one run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/accessibility.h"
#include "windows/flat_key_set.h"

namespace tilora {

/// Two keys name the same window when both fields are equal.
struct WindowKey {
  ProcessId pid = 0;
  /// The window's "AXWindowNumber", or its element's hash where it has none.
  std::int64_t windowNumber = 0;

  bool operator==(const WindowKey&) const = default;
};

}  // namespace tilora

template <>
struct std::hash<tilora::WindowKey> {
  std::size_t operator()(const tilora::WindowKey& key) const noexcept {
    const auto mixed = [](std::uint64_t value) {
      value = (value ^ (value >> 32)) * 0x9E3779B97F4A7C15U;
      return value ^ (value >> 29);
    };
    const std::uint64_t pid = mixed(static_cast<std::uint32_t>(key.pid));
    return static_cast<std::size_t>(mixed(pid + static_cast<std::uint64_t>(key.windowNumber)));
  }
};

namespace tilora {

using WindowKeySet = FlatKeySet<WindowKey>;

}  // namespace tilora
