// What window managers do differently, where it matters for bringing an iconic window back.
#pragma once

#include <cstdint>
#include <string_view>

namespace tilora::x11 {

/// How an iconic window is brought back.
enum class RestoreMethod : std::uint8_t {
  /// Map it: the manager turns the map request into a restore (ICCCM 4.1.4).
  map,
  /// _NET_ACTIVE_WINDOW, which also focuses it.
  activate,
};

/// What becomes of an iconic window of another virtual desktop when it is mapped.
enum class RestoreElsewhere : std::uint8_t {
  /// It is restored where it is.
  inPlace,
  /// It is restored on the current desktop.
  movesHere,
  /// Nothing that can be relied on: its desktop has to be entered.
  unreliable,
};

struct WindowManagerTraits {
  RestoreMethod restore = RestoreMethod::activate;
  /// Whether `restore` moves the focus.
  bool restoreFocuses = true;
  RestoreElsewhere elsewhere = RestoreElsewhere::unreliable;
  /// Whether it answers _NET_REQUEST_FRAME_EXTENTS, which tells that it has dealt with everything before.
  bool answersFrameExtents = true;
};

/// The traits of the manager that names itself so (_NET_WM_NAME of its check window). An unknown one is treated by the book.
WindowManagerTraits traitsOf(std::string_view windowManagerName);

}  // namespace tilora::x11
