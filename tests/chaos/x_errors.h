// Which errors of the X server are none of Tilora's doing.
#pragma once

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "harness/wire_tap.h"

namespace tilora::chaos {

inline std::string nameOf(const harness::WireError& error) {
  // X Window System Protocol, version 11, appendix B.
  constexpr std::array<const char*, 18> names = {"",          "BadRequest", "BadValue",    "BadWindow",   "BadPixmap", "BadAtom",
                                                 "BadCursor", "BadFont",    "BadMatch",    "BadDrawable", "BadAccess", "BadAlloc",
                                                 "BadColor",  "BadGC",      "BadIDChoice", "BadName",     "BadLength", "BadImplementation"};
  if (error.code < names.size()) return names.at(error.code);
  return "error " + std::to_string(error.code) + " of an extension";
}

/// Whether the error says no more than that a window has gone, or changed, between being asked about and the answer. Keys that another
/// program holds are asked for in vain.
inline bool isExpected(const harness::WireError& error) {
  constexpr std::array<std::uint8_t, 3> ofWindows = {XCB_WINDOW, XCB_DRAWABLE, XCB_MATCH};
  return std::find(ofWindows.begin(), ofWindows.end(), error.code) != ofWindows.end() ||
         (error.code == XCB_ACCESS && error.majorOpcode == XCB_GRAB_KEY);
}

}  // namespace tilora::chaos
