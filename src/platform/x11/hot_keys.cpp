// Grabbing key combinations and telling which of them was pressed.
#include "platform/x11/hot_keys.h"

#include <algorithm>

#include "platform/x11/event_type.h"
#include "platform/x11/reply.h"
#include "platform/x11/xkb_protocol.h"

namespace tilora::x11 {

namespace {

constexpr std::uint32_t knownModifiers = 0x100 | 0x200 | 0x800 | 0x1000;

RepeatTimes readRepeatTimes(const Connection& connection) {
  RepeatTimes times;
  const auto cookie = xcb_xkb_get_controls(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD);
  const Reply<xcb_xkb_get_controls_reply_t> reply{xcb_xkb_get_controls_reply(connection.xcb(), cookie, nullptr)};
  if (reply) {
    times.delay = std::chrono::milliseconds{reply->repeatDelay};
    times.interval = std::chrono::milliseconds{reply->repeatInterval};
  }
  return times;
}

}  // namespace

X11HotKeys::X11HotKeys(Connection& connection, X11KeyMonitor& monitor)
    : connection_(connection), monitor_(monitor), repeats_([&connection] { return readRepeatTimes(connection); }) {
  selectKeyboardEvents();
  keymap_ = Keymap::read(connection_, &keymapSequence_);
}

X11HotKeys::~X11HotKeys() {
  const auto lockStates = keymap_.lockStates();
  for (const auto& [reference, registration] : registrations_) {
    if (registration.grabbed) ungrab(*registration.grabbed, lockStates);
  }
  connection_.flush();
}

void X11HotKeys::selectKeyboardEvents() {
  if (connection_.extensions().xkbOpcode == 0) return;
  xcb_connection_t* xcb = connection_.xcb();
  // Key symbols say what a layout prints on a key and do not matter here; tools that type text change them all the time.
  constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
  constexpr std::uint16_t names = XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES | XCB_XKB_NAME_DETAIL_VIRTUAL_MOD_NAMES;
  constexpr std::uint16_t newKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = details.newKeyboardDetails = newKeyboard;
  details.affectNames = details.namesDetails = names;
  constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
  xcb_xkb_select_events_aux(xcb, XCB_XKB_ID_USE_CORE_KBD, events, 0, 0, mapParts, mapParts, &details);
  const auto flags = xcb_xkb_per_client_flags(xcb, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                              XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
  xcb_discard_reply(xcb, flags.sequence);
}

void X11HotKeys::selectModifierEvents(bool selected) const {
  xcb_xkb_select_events_details_t details{};
  details.affectState = XCB_XKB_STATE_PART_MODIFIER_STATE;
  details.stateDetails = selected ? details.affectState : std::uint16_t{0};
  xcb_xkb_select_events_aux(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
}

void X11HotKeys::keyboardTaken() {
  repeats_.keyboardTaken();
  // Nobody holds a combination any more once its modifiers are up. Every Shift that is typed is reported, so it is asked for only now.
  if (connection_.extensions().xkbOpcode == 0 || repeats_.isWatchingAll()) return;
  selectModifierEvents(true);
  connection_.flush();
}

std::optional<Subscription> X11HotKeys::installHandler(std::function<void(std::uint32_t id)> handler) {
  if (handler_ || !handler) return std::nullopt;
  handler_ = std::make_shared<std::function<void(std::uint32_t)>>(std::move(handler));
  return Subscription([this] { handler_.reset(); });
}

std::optional<HotKeyReference> X11HotKeys::registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) {
  if (keyNameForKeyCode(keyCode).empty() || (modifiers & ~knownModifiers) != 0) return std::nullopt;
  Registration registration{.id = id, .keyCode = keyCode, .mask = modifiers, .grabbed = std::nullopt};
  if (const auto combination = combinationFor(keyCode, modifiers)) {
    if (isGrabbed(*combination) || !collectGrab(sendGrab(*combination))) return std::nullopt;
    registration.grabbed = combination;
  }
  const HotKeyReference reference{++lastReference_};
  registrations_.emplace(reference, registration);
  return reference;
}

void X11HotKeys::unregisterHotKey(HotKeyReference reference) {
  const auto found = registrations_.find(reference);
  if (found == registrations_.end()) return;
  if (found->second.grabbed) ungrab(*found->second.grabbed, keymap_.lockStates());
  registrations_.erase(found);
  connection_.flush();
}

bool X11HotKeys::handleEvent(const xcb_generic_event_t& event) {
  const std::uint8_t type = typeOf(event);
  if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    const bool sentByAClient = type != event.response_type;
    if (sentByAClient || key.event != connection_.root()) return false;
    if (type == XCB_KEY_RELEASE) {
      repeats_.released(key.detail);
    } else {
      keyPressed(key);
    }
    return true;
  }
  if (isModifierChange(event)) {
    modifiersChanged(event);
    return true;
  }
  if (!isKeyboardChange(event)) return false;
  reloadKeymap(event);
  return true;
}

std::optional<X11HotKeys::Combination> X11HotKeys::combinationFor(std::uint32_t keyCode, std::uint32_t mask) const {
  const auto keycode = keymap_.keycode(keyCode);
  const auto modifiers = keymap_.modifiers(mask);
  if (!keycode || !modifiers) return std::nullopt;
  return Combination{.keycode = *keycode, .modifiers = *modifiers};
}

bool X11HotKeys::isGrabbed(const Combination& combination) const {
  return std::ranges::any_of(registrations_, [&](const auto& entry) { return entry.second.grabbed == combination; });
}

X11HotKeys::PendingGrab X11HotKeys::sendGrab(const Combination& combination) const {
  PendingGrab pending{.combination = combination, .requests = {}};
  for (const std::uint16_t lockState : keymap_.lockStates()) {
    const auto modifiers = static_cast<std::uint16_t>(combination.modifiers | lockState);
    const auto cookie = xcb_grab_key_checked(connection_.xcb(), 0, connection_.root(), modifiers, combination.keycode, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC);
    pending.requests.emplace_back(lockState, cookie);
  }
  return pending;
}

bool X11HotKeys::collectGrab(const PendingGrab& pending) const {
  std::vector<std::uint16_t> held;
  for (const auto& [lockState, cookie] : pending.requests) {
    const Reply<xcb_generic_error_t> error{xcb_request_check(connection_.xcb(), cookie)};
    if (!error) held.push_back(lockState);
  }
  if (held.size() == pending.requests.size() && !connection_.failed()) return true;
  ungrab(pending.combination, held);
  connection_.flush();
  return false;
}

void X11HotKeys::ungrab(const Combination& combination, const std::vector<std::uint16_t>& lockStates) const {
  for (const std::uint16_t lockState : lockStates) {
    const auto modifiers = static_cast<std::uint16_t>(combination.modifiers | lockState);
    xcb_ungrab_key(connection_.xcb(), combination.keycode, connection_.root(), modifiers);
  }
}

void X11HotKeys::keyPressed(const xcb_key_press_event_t& event) {
  if (!repeats_.isFirstPress(event.detail, event.time)) return;
  const Combination pressed{.keycode = event.detail, .modifiers = static_cast<std::uint16_t>(event.state & keymap_.combinationModifiers())};
  const auto found = std::ranges::find_if(registrations_, [&](const auto& entry) { return entry.second.grabbed == pressed; });
  if (found == registrations_.end()) return;
  lastPressTime_ = event.time;
  if (monitor_.takesCombinations()) {
    if (const auto keyEvent = keymap_.keyEvent(event.detail, event.state)) monitor_.deliver(*keyEvent);
    return;
  }
  // The handler may register anew or take itself away.
  const std::uint32_t id = found->second.id;
  if (const auto handler = handler_) (*handler)(id);
}

bool X11HotKeys::isModifierChange(const xcb_generic_event_t& event) const {
  const std::uint8_t type = typeOf(event);
  return connection_.extensions().xkbOpcode != 0 && type == connection_.extensions().xkbFirstEvent &&
         reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).xkbType == XCB_XKB_STATE_NOTIFY;
}

void X11HotKeys::modifiersChanged(const xcb_generic_event_t& event) {
  if ((reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).mods & keymap_.combinationModifiers()) != 0) return;
  repeats_.forgetUnwatched();
  selectModifierEvents(false);
  connection_.flush();
}

bool X11HotKeys::isKeyboardChange(const xcb_generic_event_t& event) const {
  const std::uint8_t type = typeOf(event);
  if (type == XCB_MAPPING_NOTIFY) {
    return reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request != XCB_MAPPING_POINTER;
  }
  if (connection_.extensions().xkbOpcode == 0 || type != connection_.extensions().xkbFirstEvent) return false;
  const auto xkbType = reinterpret_cast<const xcb_xkb_map_notify_event_t&>(event).xkbType;
  return xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY || xkbType == XCB_XKB_MAP_NOTIFY || xkbType == XCB_XKB_NAMES_NOTIFY;
}

void X11HotKeys::reloadKeymap(const xcb_generic_event_t& cause) {
  // One change is reported by several events; a map that was asked for after the event holds it already. Sequence numbers wrap.
  const bool covered = static_cast<std::int32_t>(cause.full_sequence - keymapSequence_) < 0;
  if (covered) return;
  regrab(Keymap::read(connection_, &keymapSequence_));
}

void X11HotKeys::regrab(const Keymap& next) {
  const auto lockStates = keymap_.lockStates();
  for (auto& [reference, registration] : registrations_) {
    if (registration.grabbed) ungrab(*std::exchange(registration.grabbed, std::nullopt), lockStates);
  }
  keymap_ = next;
  std::vector<std::pair<Registration*, PendingGrab>> pending;
  for (auto& [reference, registration] : registrations_) {
    const auto combination = combinationFor(registration.keyCode, registration.mask);
    if (!combination || isGrabbed(*combination)) continue;
    registration.grabbed = combination;
    pending.emplace_back(&registration, sendGrab(*combination));
  }
  for (auto& [registration, grab] : pending) {
    if (!collectGrab(grab)) registration->grabbed.reset();
  }
  connection_.flush();
}

}  // namespace tilora::x11
