// Declares a simulated desktop in a few lines, for tests.
//
//   auto screen = desktop()
//                     .screen(1, {0, 0, 1440, 900}, {0, 0, 1440, 875})
//                     .app(100, "com.example.notes")
//                     .window(1, {.title = "Notes"})
//                     .front(100, 1)
//                     .build();
//   WindowManagerController controller(screen->interfaces());
//   screen->clock().advance(250ms);
//   EXPECT_THAT(screen->takeEffects(), ...);
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/simulated/simulated_desktop.h"

namespace tilora::simulated {

/// What a test says of a window. Left as it is, it is a resizable standard window that the engine manages.
struct WindowOptions {
  std::string title = "Window";
  /// Accessibility coordinates: top-left origin.
  Rect frame = {50, 60, 400, 300};
  /// The "AXWindowNumber"; nothing: the window's id.
  std::optional<std::int64_t> number = {};
  /// Whether "AXSize" can be written.
  bool resizable = true;
  bool listed = true;
  std::optional<WindowServerEntry> server = {};
};

/// Collects declarations; windows belong to the application declared last, attributes to the window declared last.
class DesktopBuilder {
 public:
  DesktopBuilder() : desktop_(std::make_unique<SimulatedDesktop>()) {}

  /// Appends a screen. Bottom-left origin; `number` is its screen number, by default its id.
  DesktopBuilder& screen(ScreenId id, Rect frame, Rect visible);
  DesktopBuilder& screen(ScreenId id, Rect frame, Rect visible, std::optional<std::uint64_t> number);
  /// Appends a regular application with that bundle identifier; an empty one: it has none.
  DesktopBuilder& app(ProcessId pid, std::string bundle = {});
  DesktopBuilder& app(ProcessId pid, ApplicationTraits traits);
  /// Appends the program's own application.
  DesktopBuilder& ownApp(ProcessId pid);
  DesktopBuilder& window(WindowId id, const WindowOptions& options = {});
  /// An attribute of the last window; nothing: it cannot be read.
  DesktopBuilder& attribute(AttributeName name, std::optional<AttributeValue> value);
  DesktopBuilder& settable(AttributeName name, Settability answer = Settability::yes);
  /// Makes an application frontmost, with its focused window.
  DesktopBuilder& front(ProcessId pid, std::optional<WindowId> focused = std::nullopt);
  DesktopBuilder& setting(const std::string& key, SettingValue value);
  DesktopBuilder& untrusted();

  /// The desktop, once. It is found again later by the ids and pids given above.
  std::unique_ptr<SimulatedDesktop> build() { return std::move(desktop_); }

 private:
  std::unique_ptr<SimulatedDesktop> desktop_;
  ProcessId lastPid_ = 0;
  WindowId lastWindow_ = 0;
};

inline DesktopBuilder desktop() { return {}; }

/// Effects as a test names them. `moved` and `resized` are attribute writes in accessibility coordinates.
inline Effect moved(WindowId window, double x, double y) { return AttributeWritten{window, AttributeName::position, Point{x, y}}; }
inline Effect resized(WindowId window, double width, double height) {
  return AttributeWritten{window, AttributeName::size, Size{width, height}};
}
inline Effect windowHidden(WindowId window, bool hidden) { return AttributeWritten{window, AttributeName::hidden, hidden}; }

}  // namespace tilora::simulated
