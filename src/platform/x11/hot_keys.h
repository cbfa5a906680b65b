// System-wide key combinations: passive grabs on the root window, by the position of the key.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/key_monitor.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_monitor.h"
#include "platform/x11/keymap.h"
#include "platform/x11/repeat_filter.h"

namespace tilora::x11 {

/// The hot keys of one connection. Option is the keyboard's Alt and Command its Super, whichever real modifiers carry them; the state of
/// the lock keys and the layout group do not matter. A held key fires once.
///
/// A registration whose position or modifier the keyboard does not have at the moment is kept and takes effect with a keyboard map that
/// has it; one whose combination another client took away meanwhile is tried again at each change of the map.
class X11HotKeys : public HotKeys {
 public:
  /// Selects the keyboard events it needs. Both references must outlive it.
  X11HotKeys(Connection& connection, X11KeyMonitor& monitor);
  X11HotKeys(const X11HotKeys&) = delete;
  X11HotKeys& operator=(const X11HotKeys&) = delete;
  /// Gives every combination back.
  ~X11HotKeys() override;

  std::optional<Subscription> installHandler(std::function<void(std::uint32_t id)> handler) override;
  /// Nothing for a key code that names no position, a mask with unknown bits, a combination that is already registered here and one that
  /// another client holds.
  std::optional<HotKeyReference> registerHotKey(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) override;
  void unregisterHotKey(HotKeyReference reference) override;

  /// Looks at an event of the connection. True: it was a key of a grab or a change of the keyboard, and nobody else needs it. The handler
  /// or the monitor is called before this returns.
  bool handleEvent(const xcb_generic_event_t& event);

  /// To be called after this process grabbed the whole keyboard, which it may do while the key of a combination is down: that key's release
  /// goes elsewhere then.
  void keyboardTaken();

  /// The server's time of the last press that fired or went to the monitor; XCB_CURRENT_TIME before the first.
  xcb_timestamp_t lastPressTime() const { return lastPressTime_; }

  /// A key event of this keyboard as the recorder takes it; nothing for a key that macOS has no code for.
  std::optional<KeyEvent> keyEventFor(xcb_keycode_t keycode, std::uint16_t state) const { return keymap_.keyEvent(keycode, state); }
  const Keymap& keymap() const { return keymap_; }

 private:
  /// A keycode with a mask of real modifiers, as the server grabs them.
  struct Combination {
    xcb_keycode_t keycode = 0;
    std::uint16_t modifiers = 0;

    bool operator==(const Combination&) const = default;
  };

  struct Registration {
    std::uint32_t id = 0;
    std::uint32_t keyCode = 0;
    std::uint32_t mask = 0;
    /// What is grabbed for it; nothing while nothing is.
    std::optional<Combination> grabbed;
  };

  /// The answers to the grab requests of one combination, not yet collected.
  struct PendingGrab {
    Combination combination;
    std::vector<std::pair<std::uint16_t, xcb_void_cookie_t>> requests;
  };

  void selectKeyboardEvents();
  void selectModifierEvents(bool selected) const;
  std::optional<Combination> combinationFor(std::uint32_t keyCode, std::uint32_t mask) const;
  bool isGrabbed(const Combination& combination) const;
  PendingGrab sendGrab(const Combination& combination) const;
  bool collectGrab(const PendingGrab& pending) const;
  void ungrab(const Combination& combination, const std::vector<std::uint16_t>& lockStates) const;
  void keyPressed(const xcb_key_press_event_t& event);
  bool isModifierChange(const xcb_generic_event_t& event) const;
  void modifiersChanged(const xcb_generic_event_t& event);
  bool isKeyboardChange(const xcb_generic_event_t& event) const;
  void reloadKeymap(const xcb_generic_event_t& cause);
  void regrab(const Keymap& next);

  Connection& connection_;
  X11KeyMonitor& monitor_;
  Keymap keymap_;
  std::uint32_t keymapSequence_ = 0;
  std::map<HotKeyReference, Registration> registrations_;
  std::uint64_t lastReference_ = 0;
  std::shared_ptr<std::function<void(std::uint32_t)>> handler_;
  RepeatFilter repeats_;
  xcb_timestamp_t lastPressTime_ = XCB_CURRENT_TIME;
};

}  // namespace tilora::x11
