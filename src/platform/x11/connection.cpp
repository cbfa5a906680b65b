// Opening the connection and asking for the extensions.
#include "platform/x11/connection.h"

#include <xcb/randr.h>
#include <xcb/res.h>

#include <utility>

#include "platform/x11/reply.h"
#include "platform/x11/xkb_protocol.h"

namespace tilora::x11 {

std::unique_ptr<Connection> Connection::open(const std::string& displayName) {
  int screenNumber = 0;
  xcb_connection_t* xcb = xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), &screenNumber);
  if (xcb_connection_has_error(xcb) != 0) {
    xcb_disconnect(xcb);
    return nullptr;
  }
  auto roots = xcb_setup_roots_iterator(xcb_get_setup(xcb));
  for (int i = 0; i < screenNumber && roots.rem > 1; ++i) xcb_screen_next(&roots);
  std::unique_ptr<Connection> connection(new Connection(xcb, roots.data, screenNumber));
  return connection->isWhole_ ? std::move(connection) : nullptr;
}

Connection::Connection(xcb_connection_t* xcb, xcb_screen_t* screen, int screenNumber)
    : xcb_(xcb), screen_(screen), screenNumber_(screenNumber) {
  xcb_prefetch_extension_data(xcb_, &xcb_randr_id);
  xcb_prefetch_extension_data(xcb_, &xcb_xkb_id);
  xcb_prefetch_extension_data(xcb_, &xcb_res_id);
  const auto atoms = internAtoms(xcb_);
  isWhole_ = atoms.has_value();
  if (atoms) atoms_ = *atoms;
  if (const auto* randr = xcb_get_extension_data(xcb_, &xcb_randr_id); randr != nullptr && randr->present != 0) {
    extensions_.randrFirstEvent = randr->first_event;
    extensions_.randrOpcode = randr->major_opcode;
    Reply<xcb_randr_query_version_reply_t>{xcb_randr_query_version_reply(xcb_, xcb_randr_query_version(xcb_, 1, 5), nullptr)};
  }
  if (const auto* xkb = xcb_get_extension_data(xcb_, &xcb_xkb_id); xkb != nullptr && xkb->present != 0) {
    extensions_.xkbFirstEvent = xkb->first_event;
    extensions_.xkbOpcode = xkb->major_opcode;
    Reply<xcb_xkb_use_extension_reply_t>{xcb_xkb_use_extension_reply(xcb_, xcb_xkb_use_extension(xcb_, 1, 0), nullptr)};
  }
  if (const auto* res = xcb_get_extension_data(xcb_, &xcb_res_id); res != nullptr && res->present != 0) {
    extensions_.resOpcode = res->major_opcode;
    Reply<xcb_res_query_version_reply_t>{xcb_res_query_version_reply(xcb_, xcb_res_query_version(xcb_, 1, 2), nullptr)};
  }
}

Connection::~Connection() { xcb_disconnect(xcb_); }

}  // namespace tilora::x11
