// The atoms that the X11 desktop uses, interned in one batch.
#pragma once

#include <xcb/xcb.h>

#include <optional>

namespace tilora::x11 {

// clang-format off
#define TILORA_X11_ATOMS(X)             \
  X(Alt)                                \
  X(NumLock)                            \
  X(ScrollLock)                         \
  X(Super)                              \
  X(UTF8_STRING)                        \
  X(COMPOUND_TEXT)                      \
  X(MANAGER)                            \
  X(WM_CHANGE_STATE)                    \
  X(WM_CLIENT_LEADER)                   \
  X(WM_CLIENT_MACHINE)                  \
  X(WM_DELETE_WINDOW)                   \
  X(WM_PROTOCOLS)                       \
  X(WM_STATE)                           \
  X(WM_TAKE_FOCUS)                      \
  X(WM_WINDOW_ROLE)                     \
  X(_GTK_APPLICATION_ID)                \
  X(_GTK_FRAME_EXTENTS)                 \
  X(_NET_ACTIVE_WINDOW)                 \
  X(_NET_CLIENT_LIST)                   \
  X(_NET_CLIENT_LIST_STACKING)          \
  X(_NET_CURRENT_DESKTOP)               \
  X(_NET_FRAME_EXTENTS)                 \
  X(_NET_MOVERESIZE_WINDOW)             \
  X(_NET_NUMBER_OF_DESKTOPS)            \
  X(_NET_REQUEST_FRAME_EXTENTS)         \
  X(_NET_RESTACK_WINDOW)                \
  X(_NET_SHOWING_DESKTOP)               \
  X(_NET_SUPPORTED)                     \
  X(_NET_SUPPORTING_WM_CHECK)           \
  X(_NET_WM_ACTION_MOVE)                \
  X(_NET_WM_ACTION_RESIZE)              \
  X(_NET_WM_ALLOWED_ACTIONS)            \
  X(_NET_WM_DESKTOP)                    \
  X(_NET_WM_NAME)                       \
  X(_NET_WM_PID)                        \
  X(_NET_WM_STATE)                      \
  X(_NET_WM_STATE_FULLSCREEN)           \
  X(_NET_WM_STATE_HIDDEN)               \
  X(_NET_WM_STATE_MAXIMIZED_HORZ)       \
  X(_NET_WM_STATE_MAXIMIZED_VERT)       \
  X(_NET_WM_STATE_SHADED)               \
  X(_NET_WM_STATE_SKIP_TASKBAR)         \
  X(_NET_WM_STATE_STICKY)               \
  X(_NET_WM_STRUT)                      \
  X(_NET_WM_STRUT_PARTIAL)              \
  X(_NET_WM_USER_TIME)                  \
  X(_NET_WM_USER_TIME_WINDOW)           \
  X(_NET_WM_WINDOW_TYPE)                \
  X(_NET_WM_WINDOW_TYPE_COMBO)          \
  X(_NET_WM_WINDOW_TYPE_DESKTOP)        \
  X(_NET_WM_WINDOW_TYPE_DIALOG)         \
  X(_NET_WM_WINDOW_TYPE_DND)            \
  X(_NET_WM_WINDOW_TYPE_DOCK)           \
  X(_NET_WM_WINDOW_TYPE_DROPDOWN_MENU)  \
  X(_NET_WM_WINDOW_TYPE_MENU)           \
  X(_NET_WM_WINDOW_TYPE_NORMAL)         \
  X(_NET_WM_WINDOW_TYPE_NOTIFICATION)   \
  X(_NET_WM_WINDOW_TYPE_POPUP_MENU)     \
  X(_NET_WM_WINDOW_TYPE_SPLASH)         \
  X(_NET_WM_WINDOW_TYPE_TOOLBAR)        \
  X(_NET_WM_WINDOW_TYPE_TOOLTIP)        \
  X(_NET_WM_WINDOW_TYPE_UTILITY)        \
  X(_NET_WORKAREA)                      \
  X(_TILORA_HIDDEN)                     \
  X(_TILORA_INSTANCE)                   \
  X(_TILORA_TIME)                       \
  X(_XSETTINGS_SETTINGS)
// clang-format on

/// Every atom under its own name.
struct Atoms {
#define TILORA_X11_DECLARE(name) xcb_atom_t name = XCB_ATOM_NONE;
  TILORA_X11_ATOMS(TILORA_X11_DECLARE)
#undef TILORA_X11_DECLARE
};

/// Interns all of them with one round trip. Nothing when one could not be interned: the server has no memory, or is gone.
std::optional<Atoms> internAtoms(xcb_connection_t* connection);

}  // namespace tilora::x11
