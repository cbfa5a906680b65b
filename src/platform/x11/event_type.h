// What kind of event one is.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace tilora::x11 {

/// The code of the event, whether it comes from the server or another client sent it (SendEvent sets the highest bit).
inline std::uint8_t typeOf(const xcb_generic_event_t& event) {
  constexpr std::uint8_t sent = 0x80;
  return static_cast<std::uint8_t>(event.response_type & ~sent);
}

}  // namespace tilora::x11
