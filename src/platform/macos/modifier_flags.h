// The modifier keys in the two forms that the system has for them.
#pragma once

#include <cstdint>

namespace tilora::macos {

/// The flags of an event (NSEventModifierFlags) for a mask of Carbon's Events.h.
std::uint64_t eventFlags(std::uint32_t carbonModifiers);

}  // namespace tilora::macos
