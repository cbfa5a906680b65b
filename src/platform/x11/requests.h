// The requests that a pager may make of a window manager: EWMH client messages to the root window, source indication 2.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

#include "platform/x11/connection.h"
#include "platform/x11/values.h"

namespace tilora::x11 {

/// _NET_MOVERESIZE_WINDOW with StaticGravity: `client` is the client window's own area in root coordinates, whatever surrounds it. A window
/// that is just moved is given the size that it has: Fluxbox makes one up where none is given.
void requestFrame(Connection& connection, xcb_window_t window, const PixelRect& client);

/// Takes both maximised states away (_NET_WM_STATE).
void requestUnmaximize(Connection& connection, xcb_window_t window);

/// Takes the fullscreen state away (_NET_WM_STATE).
void requestNotFullscreen(Connection& connection, xcb_window_t window);

/// WM_CHANGE_STATE to IconicState (ICCCM 4.1.4).
void requestIconify(Connection& connection, xcb_window_t window);

/// _NET_ACTIVE_WINDOW: restores, raises and focuses. `time` is a recent time of the server: some managers refuse an older one.
void requestActivation(Connection& connection, xcb_window_t window, xcb_timestamp_t time);

/// _NET_WM_DESKTOP.
void requestDesktop(Connection& connection, xcb_window_t window, std::uint32_t desktop);

/// _NET_CURRENT_DESKTOP.
void requestCurrentDesktop(Connection& connection, std::uint32_t desktop, xcb_timestamp_t time);

/// _NET_RESTACK_WINDOW: to the top of its layer.
void requestRaise(Connection& connection, xcb_window_t window);

/// _NET_REQUEST_FRAME_EXTENTS: the manager answers by setting _NET_FRAME_EXTENTS on `window`, which need not be mapped.
void requestFrameExtents(Connection& connection, xcb_window_t window);

}  // namespace tilora::x11
