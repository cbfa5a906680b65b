// Sending XTEST events.
#include "harness/input.h"

#include <xcb/xtest.h>

#include <vector>

namespace tilora::harness {

namespace {

void fake(Display& display, std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0) {
  xcb_test_fake_input(display.xcb(), type, detail, XCB_CURRENT_TIME,
                      type == XCB_MOTION_NOTIFY ? display.root() : xcb_window_t{XCB_WINDOW_NONE}, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 0);
  xcb_flush(display.xcb());
}

}  // namespace

void Keyboard::press(Key key) { fake(display_, XCB_KEY_PRESS, static_cast<std::uint8_t>(key)); }

void Keyboard::release(Key key) { fake(display_, XCB_KEY_RELEASE, static_cast<std::uint8_t>(key)); }

void Keyboard::chord(std::initializer_list<Key> keys) {
  std::vector<Key> held(keys);
  for (const Key key : held) press(key);
  while (!held.empty()) {
    release(held.back());
    held.pop_back();
  }
}

void PointerDevice::moveTo(int x, int y) { fake(display_, XCB_MOTION_NOTIFY, 0, x, y); }

void PointerDevice::press(int button) { fake(display_, XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button)); }

void PointerDevice::release(int button) { fake(display_, XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button)); }

void PointerDevice::click(int x, int y, int button) {
  moveTo(x, y);
  press(button);
  release(button);
}

}  // namespace tilora::harness
