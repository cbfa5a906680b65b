// The properties that make up a client window: which atom holds each, how much of it is read, and how it is understood.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>

#include "platform/x11/atoms.h"
#include "platform/x11/client_window.h"
#include "platform/x11/property.h"

namespace tilora::x11 {

/// One property of a window and its meaning.
struct PropertyField {
  Field field;
  xcb_atom_t atom;
  /// The most that is read, in 32-bit units: no client can make a read unbounded.
  std::uint32_t maximumLength;
  void (*read)(ClientWindow&, const Property&, const Atoms&);
};

inline constexpr std::size_t propertyFieldCount = fieldCount - 3;

/// All fields that are properties (all but the client id, the size and the position).
std::array<PropertyField, propertyFieldCount> propertyFields(const Atoms& atoms);

}  // namespace tilora::x11
