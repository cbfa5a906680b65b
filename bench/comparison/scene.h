// Where the windows of the measured actions go, and the keys that send them there.
#pragma once

#include "desk.h"

namespace tilora::bench {

inline Chord tiloraKey(harness::Key key) { return {{harness::Key::leftAlt, harness::Key::leftShift}, key}; }

inline const Chord toTheLeft = tiloraKey(harness::Key::leftBracket);
inline const Chord toTheRight = tiloraKey(harness::Key::rightBracket);
inline const Chord fill = tiloraKey(harness::Key::space);

inline const std::vector<harness::Key> tiloraKeys = {toTheLeft.key, toTheRight.key, fill.key};

/// The frames that Tilora gives with its padding of 12.
struct Places {
  harness::PixelRect left;
  harness::PixelRect right;
  harness::PixelRect full;
};

inline Places placesOn(const harness::PixelRect& visible) {
  constexpr int padding = 12;
  const int half = (visible.width - 3 * padding) / 2;
  const int height = visible.height - 2 * padding;
  const int x = visible.x + padding;
  const int y = visible.y + padding;
  return {{x, y, half, height}, {x + half + padding, y, half, height}, {x, y, visible.width - 2 * padding, height}};
}

}  // namespace tilora::bench
