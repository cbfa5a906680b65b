// Windows whose manager ends or is gone.
#pragma once

#include <xcb/xcb.h>

#include <vector>

#include "platform/x11/connection.h"

namespace tilora::x11 {

/// The windows that carry the mark of having been hidden, but for those that their programs withdrew (unmapped, and WM_STATE absent or
/// WithdrawnState); inside frames or not.
std::vector<xcb_window_t> markedWindows(Connection& connection);

/// Waits until no window manager is left, two seconds at most; whether that came about. One that ends takes the windows off its list and
/// destroys the window it is known by before it takes the frames away that it has put around the clients.
bool awaitManagersEnd(Connection& connection);

/// Waits until no window manager holds a window of ours that was unmapped (WM_STATE absent or WithdrawnState, ICCCM 4.1.4), two seconds at
/// most; whether that came about. A window that is gone is held by nobody.
bool awaitWithdrawal(const Connection& connection, xcb_window_t window);

/// Leaves a window that nobody manages as a manager leaves one in use: mapped, in NormalState (ICCCM 4.1.3.1), without
/// _NET_WM_STATE_HIDDEN and without the mark. So the next manager takes it over.
void showUnmanaged(Connection& connection, xcb_window_t window);

}  // namespace tilora::x11
