// Asking for the time by changing nothing: the server stamps the notification (ICCCM 2.1).
#include "platform/x11/server_clock.h"
#include "platform/x11/event_type.h"

namespace tilora::x11 {
namespace {

constexpr std::uint8_t errorResponse = 0;

}  // namespace

xcb_timestamp_t ServerClock::now() {
  if (timeOfTurn_) return *timeOfTurn_;
  const xcb_atom_t property = connection_.atoms()._TILORA_TIME;
  const auto cookie = xcb_change_property(connection_.xcb(), XCB_PROP_MODE_APPEND, helper_, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
  connection_.flush();
  const auto event = events_.waitFor([&](const xcb_generic_event_t& candidate) {
    if (candidate.response_type == errorResponse) return candidate.full_sequence == cookie.sequence;
    if (typeOf(candidate) != XCB_PROPERTY_NOTIFY) return false;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(candidate);
    return change.window == helper_ && change.atom == property;
  });
  if (!event || event->response_type == errorResponse) return XCB_CURRENT_TIME;
  timeOfTurn_ = reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
  return *timeOfTurn_;
}

}  // namespace tilora::x11
