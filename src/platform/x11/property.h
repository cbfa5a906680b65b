// One window property as it was read: bounded, and checked before it is believed.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/atoms.h"
#include "platform/x11/reply.h"

namespace tilora::x11 {

/// The value of a property. Owns the reply; a null reply reads as an absent property.
class Property {
 public:
  Property() = default;
  explicit Property(Reply<xcb_get_property_reply_t> reply) : reply_(std::move(reply)) {}

  bool isPresent() const { return reply_ && reply_->type != XCB_ATOM_NONE; }
  /// The 32-bit items of a property of that type; empty when it is of another type or format.
  std::vector<std::uint32_t> items(xcb_atom_t type) const;
  /// The first such item.
  std::optional<std::uint32_t> item(xcb_atom_t type) const;
  /// Text of type STRING or UTF8_STRING as valid UTF-8 without control bytes at NUL: everything up to the first NUL. Absent when there is
  /// no text or it is empty.
  std::optional<std::string> text(const Atoms& atoms) const;
  /// The NUL-separated texts of a property such as WM_CLASS.
  std::vector<std::string> texts(const Atoms& atoms) const;

  const xcb_get_property_reply_t* reply() const { return reply_.get(); }

 private:
  std::string bytes() const;

  Reply<xcb_get_property_reply_t> reply_;
};

/// The bytes as valid UTF-8: ill-formed sequences become U+FFFD (Unicode, chapter 3.9).
std::string repairedUtf8(const std::string& bytes);

}  // namespace tilora::x11
