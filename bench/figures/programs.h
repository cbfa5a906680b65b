// The names of the programs that are compared, in the order of the tables.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tilora::bench {

/// The window managers that Tilora runs on.
inline const std::array<std::string, 9> hosts = {"openbox", "xfwm4", "metacity", "marco", "icewm", "fluxbox", "jwm", "kwin", "mutter"};
/// The one that the scripts run on, and everything of Tilora besides its latency is measured on.
inline const std::string& firstHost = hosts.front();

std::string tiloraOn(const std::string& host);
/// The client that answers the same keys with the requests that have to be sent, and does nothing else.
std::string floorOn(const std::string& host);

/// Window managers that tile by themselves.
inline const std::array<std::string, 5> tilers = {"i3", "bspwm with sxhkd", "herbstluftwm", "dwm", "awesome"};
/// One-liners on the keys of sxhkd, on the first host.
inline const std::array<std::string, 2> scripts = {"wmctrl script", "xdotool script"};

bool isTiler(const std::string& program);
bool isScript(const std::string& program);

/// All whose latency is measured.
std::vector<std::string> contestants();
/// All whose processor time, memory and start are measured.
std::vector<std::string> residents();

}  // namespace tilora::bench
