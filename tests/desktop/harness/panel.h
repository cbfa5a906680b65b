// Panels that take icons, and what Tilora shows in and under them.
#pragma once

#include <cstdint>
#include <optional>

#include "harness/display.h"
#include "harness/process.h"
#include "harness/session.h"

namespace tilora::harness {

enum class Panel : std::uint8_t { tint2, trayer, xfce };

/// Starts a panel at the top-left of the screen; tint2's is on the monitor of that number, from 1 on. The icons of Xfce's come over the
/// message bus, which is started for it.
ManagedProcess startPanel(Panel kind, Session& session, int monitor = 1);

/// Where Tilora's icon is; none while no panel has embedded it (XEmbed).
std::optional<PixelRect> embeddedIcon(Display& display);
/// Where Tilora's menu is; none while it is closed.
std::optional<PixelRect> openMenuArea(Display& display);

}  // namespace tilora::harness
