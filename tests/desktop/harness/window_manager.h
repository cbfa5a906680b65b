// The window managers that Tilora is tested on.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "harness/display.h"
#include "harness/session.h"

namespace tilora::harness {

enum class WindowManagerKind : std::uint8_t { openbox, xfwm4, metacity, marco, icewm, fluxbox, jwm, kwin, mutter };

inline constexpr std::array<WindowManagerKind, 9> allWindowManagers = {
    WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::metacity, WindowManagerKind::marco, WindowManagerKind::icewm,
    WindowManagerKind::fluxbox, WindowManagerKind::jwm,   WindowManagerKind::kwin,     WindowManagerKind::mutter};

/// The name of its program, less what comes after an underscore: "openbox", "kwin".
std::string nameOf(WindowManagerKind kind);
inline std::ostream& operator<<(std::ostream& stream, WindowManagerKind kind) { return stream << nameOf(kind); }
std::optional<WindowManagerKind> windowManagerNamed(const std::string& name);

struct WindowManagerOptions {
  /// Lets the window manager composite, where it can be told; then _GTK_FRAME_EXTENTS is in _NET_SUPPORTED.
  bool compositing = false;
  /// Takes the place of the window manager that runs.
  bool replace = false;
};

/// A running window manager with the behaviour it has out of the box, but without effects, first-start dialogs and session management.
class WindowManager {
 public:
  /// Starts it and waits until it answers on `display`. Throws std::runtime_error with its output when it does not.
  WindowManager(WindowManagerKind kind, Session& session, Display& display, WindowManagerOptions options = {});

  WindowManager(const WindowManager&) = delete;
  WindowManager& operator=(const WindowManager&) = delete;
  ~WindowManager();

  WindowManagerKind kind() const { return kind_; }
  ManagedProcess& process() { return *process_; }
  /// Its name, and whether it runs or how it ended, with what it said.
  std::string describe();

 private:
  WindowManagerKind kind_;
  std::optional<ManagedProcess> process_;
};

}  // namespace tilora::harness
