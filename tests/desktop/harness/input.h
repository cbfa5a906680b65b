// A keyboard and a pointer that the X server takes for real ones (XTEST).
#pragma once

#include <cstdint>
#include <initializer_list>

#include "harness/display.h"

namespace tilora::harness {

/// Keys by their place on the keyboard, with the XKB name of the place in the comment. The values are the server's keycodes (evdev).
enum class Key : std::uint8_t {
  escape = 9,         // ESC
  two = 11,           // AE02
  tab = 23,           // TAB
  w = 25,             // AD02
  leftBracket = 34,   // AD11
  rightBracket = 35,  // AD12
  enter = 36,         // RTRN
  leftControl = 37,   // LCTL
  a = 38,             // AC01
  s = 39,             // AC02
  d = 40,             // AC03
  j = 44,             // AC07
  k = 45,             // AC08
  leftShift = 50,     // LFSH
  x = 53,             // AB02
  comma = 59,         // AB08
  leftAlt = 64,       // LALT
  space = 65,         // SPCE
  capsLock = 66,      // CAPS
  f4 = 70,            // FK04
  f5 = 71,            // FK05
  numLock = 77,       // NMLK
  upArrow = 111,      // UP
  leftArrow = 113,    // LEFT
  rightArrow = 114,   // RGHT
  downArrow = 116,    // DOWN
  leftSuper = 133,    // LWIN
};

class Keyboard {
 public:
  explicit Keyboard(Display& display) : display_(display) {}

  void press(Key key);
  void release(Key key);
  /// Presses and releases the last key while the ones before it are held.
  void chord(std::initializer_list<Key> keys);
  void tap(Key key) { chord({key}); }

 private:
  Display& display_;
};

class PointerDevice {
 public:
  explicit PointerDevice(Display& display) : display_(display) {}

  void moveTo(int x, int y);
  void press(int button = 1);
  void release(int button = 1);
  void click(int x, int y, int button = 1);

 private:
  Display& display_;
};

}  // namespace tilora::harness
