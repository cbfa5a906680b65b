// Interning the atom table.
#include "platform/x11/atoms.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/x11/reply.h"

namespace tilora::x11 {

std::optional<Atoms> internAtoms(xcb_connection_t* connection) {
  Atoms atoms;
  struct Entry {
    std::string_view name;
    xcb_atom_t* atom;
  };
  const std::array entries = {
#define TILORA_X11_ENTRY(name) Entry{#name, &atoms.name},
      TILORA_X11_ATOMS(TILORA_X11_ENTRY)
#undef TILORA_X11_ENTRY
  };
  std::array<xcb_intern_atom_cookie_t, entries.size()> cookies{};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    cookies[i] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(entries[i].name.size()), entries[i].name.data());
  }
  bool isWhole = true;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection, cookies[i], nullptr)};
    if (reply) *entries[i].atom = reply->atom;
    isWhole &= reply != nullptr;
  }
  return isWhole ? std::optional(atoms) : std::nullopt;
}

}  // namespace tilora::x11
