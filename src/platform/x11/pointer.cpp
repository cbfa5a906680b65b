// Querying the pointer.
#include "platform/x11/pointer.h"

#include <utility>

#include "platform/x11/hot_keys.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {

std::optional<std::uint16_t> X11Pointer::state() const {
  if (knownState_) return knownState_;
  xcb_connection_t* xcb = connection_.xcb();
  const Reply<xcb_query_pointer_reply_t> reply{xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection_.root()), nullptr)};
  if (!reply) return std::nullopt;
  return reply->mask;
}

std::uint64_t X11Pointer::pressedButtons() {
  const auto mask = state();
  const std::uint64_t buttons = mask ? buttonsOf(*mask) : 0;
  if (knownState_) return buttons;
  const std::uint64_t held = std::exchange(held_, buttons);
  return buttons == 0 && mask ? held : buttons;
}

std::uint64_t X11Pointer::buttonsOf(unsigned mask) const {
  constexpr std::uint64_t primary = 1;
  constexpr std::uint64_t secondary = 2;
  constexpr std::uint64_t middle = 4;
  // Buttons are logical: the server has already applied a left-handed mapping.
  const unsigned movers = unsigned{hotKeys_.keymap().alt()} | hotKeys_.keymap().super();
  std::uint64_t buttons = 0;
  if ((mask & XCB_BUTTON_MASK_1) != 0) buttons |= primary;
  if ((mask & XCB_BUTTON_MASK_3) != 0) buttons |= secondary;
  if ((mask & XCB_BUTTON_MASK_2) != 0) buttons |= middle;
  if ((buttons & (secondary | middle)) != 0 && (mask & movers) != 0) buttons |= primary;
  return buttons;
}

}  // namespace tilora::x11
