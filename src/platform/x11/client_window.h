// One window of another program, as far as the server and the window manager have told of it.
#pragma once

#include <xcb/xcb.h>

#include <bitset>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/accessibility.h"
#include "platform/x11/values.h"

namespace tilora::x11 {

/// _NET_WM_WINDOW_TYPE, as far as it is told apart here.
enum class WindowType : std::uint8_t { unset, normal, dialog, palette, desktop, dock, other };

/// The members of _NET_WM_STATE in use.
struct WindowStates {
  bool hidden = false;
  bool fullscreen = false;
  bool maximizedHorizontally = false;
  bool maximizedVertically = false;
  bool skipTaskbar = false;

  bool maximized() const { return maximizedHorizontally || maximizedVertically; }
  bool operator==(const WindowStates&) const = default;
};

/// Why Tilora keeps a window iconic. Stored on the window itself as a mask, so that it outlives the program.
struct HideMarks {
  bool application = false;
  bool window = false;

  bool any() const { return application || window; }
  std::uint32_t mask() const { return (application ? 1U : 0U) | (window ? 2U : 0U); }
  bool operator==(const HideMarks&) const = default;
};

/// _NET_WM_STRUT_PARTIAL: pixels from each edge of the root window, and the ranges along it, both ends included.
struct Strut {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
  int leftStart = 0, leftEnd = 0;
  int rightStart = 0, rightEnd = 0;
  int topStart = 0, topEnd = 0;
  int bottomStart = 0, bottomEnd = 0;

  bool operator==(const Strut&) const = default;
};

/// What is read of a window; each can be refreshed alone.
enum class Field : std::uint8_t {
  classes,
  machine,
  leader,
  applicationId,
  processId,
  clientId,
  type,
  transientFor,
  states,
  allowedActions,
  desktop,
  decoration,
  shadow,
  sizeHints,
  name,
  legacyName,
  role,
  marks,
  strutPartial,
  strut,
  size,
  position,
};

inline constexpr std::size_t fieldCount = 22;

/// What was asked of a window's frame, and what came of it.
struct PendingFrame {
  /// Written in this turn; accessibility coordinates less the top of all screens, that is root coordinates, not rounded.
  std::optional<Point> position;
  std::optional<Size> size;
  /// The visible frame that was requested last, within the window's own limits; root coordinates.
  std::optional<PixelRect> requested;
  /// Whether the window manager may hold the window to be elsewhere than it is, and ignore a request for the frame that it believes the
  /// window to have: Openbox does when it takes over, and after fullscreen.
  bool unsure = false;
  /// Whether the window manager took the request for one to be fullscreen, since it covered a monitor.
  bool tookFullscreen = false;
  /// Whether the window was fullscreen by somebody else's wish when it was last looked at.
  bool wasFullscreen = false;
  /// Whether the manager may put the window elsewhere than asked time and again: Openbox does after fullscreen.
  bool mayBeOff = false;
  /// The decorations and shadow that the request reckoned with.
  Extents decoration;
  Extents shadow;
  /// How far from the requested place the manager puts this window. Openbox reckons with the border that a window declared, and takes the
  /// border away, so that nothing but the outcome tells.
  int driftX = 0;
  int driftY = 0;
  /// Whether the frame was asked for once more without what was made up for.
  bool wasMadeUp = false;
  /// What the window made of the request, and stays.
  std::optional<PixelRect> accepted;
  /// Whether the window has answered the last request.
  bool answered = true;
  int attempts = 0;
  /// The visible frame as the manager told it last, and since when.
  PixelRect shown;
  std::chrono::steady_clock::time_point shownSince;
  /// The visible frame when a pass last wrote to it, and since when it had stayed so.
  PixelRect last;
  std::chrono::steady_clock::time_point unchangedSince;
  std::chrono::steady_clock::time_point sentAt;
};

/// The change of the iconic state that was asked for and has not shown yet.
enum class IconRequest : std::uint8_t { none, iconify, restore };

struct ClientWindow : std::enable_shared_from_this<ClientWindow> {
  // What every pass asks of every window comes first and close together: with very many windows a pass mostly waits for memory.
  xcb_window_t id = XCB_WINDOW_NONE;
  /// The process id of the application that it belongs to; assigned once.
  ProcessId application = 0;
  /// What the engine sees of it; null until it is first asked for.
  std::unique_ptr<AccessibilityElement> element;
  /// Until when its appearance is not judged: it was shown by somebody else a moment ago, and who has the focus is not yet told.
  std::chrono::steady_clock::time_point settlesAt;
  /// The virtual desktop; absent: on all of them.
  std::optional<std::uint32_t> desktop;
  WindowType type = WindowType::unset;
  bool isGone = false;
  /// Whether the window that it is transient for is another one of the listed windows.
  bool hasParent = false;
  xcb_window_t transientFor = XCB_WINDOW_NONE;
  WindowStates states;
  /// Whether the window manager lists its allowed actions at all, and which of those in use it has ever listed: some take them from the
  /// list while the window is iconic, maximised or on another desktop.
  bool listsActions = false;
  bool mayMove = false;
  bool mayResize = false;
  /// The requested state; it is on its way to the window, or already there.
  HideMarks marks;
  /// What the window's own property holds.
  HideMarks storedMarks;
  IconRequest iconRequest = IconRequest::none;
  /// It was asked to become iconic and did not.
  bool refusesHiding = false;
  /// Whether `role` tells it from the other windows of its application and will be the same the next time.
  bool roleIdentifies = false;
  PixelRect client;
  Extents decoration;
  Extents shadow;

  SizeLimits limits;
  std::optional<std::string> name;
  std::optional<std::string> legacyName;
  std::string role;
  std::string className;
  std::string instanceName;
  std::string machine;
  std::string applicationId;
  xcb_window_t leader = XCB_WINDOW_NONE;
  /// The process that created the window as the server knows it; 0: it does not.
  std::uint32_t clientProcess = 0;
  /// What the window itself says; meaningful only together with `machine`. 0: nothing.
  std::uint32_t declaredProcess = 0;
  /// The width of the border that the client asked for, once it is known; managers take it away, and some reckon with it all the same.
  std::optional<int> declaredBorder;
  std::optional<Strut> strutPartial;
  std::optional<Strut> strut;

  std::chrono::steady_clock::time_point iconRequestedAt;
  /// Whether the request to become iconic has had no effect for too long once.
  bool iconifyIsOverdue = false;
  /// Whether a restore was asked for before the window was seen to follow the request to become iconic: that it is not iconic says nothing
  /// then.
  bool iconifyIsUnseen = false;
  /// How often a restore has been asked for without an effect.
  int restoreAttempts = 0;
  /// Whether it is mapped although it is iconic: the server maps the windows of a manager that dies, and the next one may leave it at that.
  bool mapIsNoRequest = false;
  PendingFrame frame;

  /// Larger: focused more recently; 0: never seen focused.
  std::uint64_t focusSerial = 0;
  std::bitset<fieldCount> stale;

  bool isSettling() const { return settlesAt != std::chrono::steady_clock::time_point{} && std::chrono::steady_clock::now() < settlesAt; }
  /// Fullscreen by somebody else's wish.
  bool isFullscreen() const { return states.fullscreen && !frame.tookFullscreen; }
  /// Root coordinates.
  PixelRect visible() const { return visibleFrame(client, decoration, shadow); }
  bool isTransient() const { return transientFor != XCB_WINDOW_NONE; }
  /// NORMAL, or nothing said, and on its own. Managers make a NORMAL window with a parent iconic together with it and show both together,
  /// so that neither can be hidden alone.
  bool isNormal() const { return (type == WindowType::normal && !hasParent) || (type == WindowType::unset && !isTransient()); }
  /// An ordinary window of the user's, its dialogs and palettes included: what hiding an application takes away.
  bool isOrdinary() const { return type != WindowType::desktop && type != WindowType::dock && type != WindowType::other; }
  /// Iconic by somebody else's wish. The stored marks of a window that is to be shown again go when that is asked for.
  bool isMinimizedByUser() const { return states.hidden && !marks.any() && !storedMarks.any() && iconRequest != IconRequest::restore; }
  bool isOn(std::uint32_t currentDesktop) const { return !desktop || *desktop == currentDesktop; }
};

}  // namespace tilora::x11
