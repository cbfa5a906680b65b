// The pointer's buttons, asked from the server.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/pointer.h"
#include "platform/x11/connection.h"

namespace tilora::x11 {

class X11HotKeys;

/// The buttons as NSEvent numbers them: bit 0 the primary, bit 1 the secondary, bit 2 the middle one. Bit 0 is also set while the second or
/// third button is held with Alt or Super, which is how window managers move and resize a window.
class X11Pointer : public Pointer {
 public:
  /// `hotKeys` knows which modifiers carry Alt and Super. Both references must outlive it.
  X11Pointer(Connection& connection, const X11HotKeys& hotKeys) : connection_(connection), hotKeys_(hotKeys) {}

  /// One round trip, unless the mask is known. No button when the server does not answer. The first question after a release still answers
  /// what was held: window managers tell where they left a window only once they have heard of the release.
  std::uint64_t pressedButtons() override;
  /// The state that an event of this moment carries (KeyButMask); absent: it has to be asked for.
  void setKnownState(std::optional<std::uint16_t> state) { knownState_ = state; }

 private:
  std::optional<std::uint16_t> state() const;
  std::uint64_t buttonsOf(unsigned mask) const;

  Connection& connection_;
  const X11HotKeys& hotKeys_;
  std::optional<std::uint16_t> knownState_;
  /// What the last question found, while it is asked.
  std::uint64_t held_ = 0;
};

}  // namespace tilora::x11
