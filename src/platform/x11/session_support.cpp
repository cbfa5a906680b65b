// Looking for the window manager's promises.
#include "platform/x11/session_support.h"

#include <xcb/randr.h>

#include <string_view>
#include <utility>

#include "platform/x11/reply.h"

namespace tilora::x11 {
namespace {

constexpr std::string_view xwaylandName = "XWAYLAND";
/// So long a window manager may take to start before the user is told that there is none.
constexpr auto startTime = std::chrono::seconds(5);

}  // namespace

bool isXwayland(const Connection& connection) {
  xcb_connection_t* xcb = connection.xcb();
  const auto extension = xcb_query_extension(xcb, static_cast<std::uint16_t>(xwaylandName.size()), xwaylandName.data());
  const auto resources = xcb_randr_get_screen_resources_current(xcb, connection.root());
  const Reply<xcb_query_extension_reply_t> extensionReply{xcb_query_extension_reply(xcb, extension, nullptr)};
  const Reply<xcb_randr_get_screen_resources_current_reply_t> reply{xcb_randr_get_screen_resources_current_reply(xcb, resources, nullptr)};
  if (extensionReply && extensionReply->present != 0) return true;
  if (!reply) return false;
  // Servers without the extension tell themselves by the names of their outputs.
  const std::string_view names(reinterpret_cast<const char*>(xcb_randr_get_screen_resources_current_names(reply.get())),
                               static_cast<std::size_t>(xcb_randr_get_screen_resources_current_names_length(reply.get())));
  return names.find(xwaylandName) != std::string_view::npos;
}

std::vector<std::string> missingSupport(const Connection& connection, const DesktopFacts& facts, bool xwayland) {
  if (connection.failed()) return {"The connection to the X server is lost."};
  if (xwayland) return {"This is a Wayland session. Tilora needs an X11 session."};
  if (facts.windowManager == XCB_WINDOW_NONE) return {"No window manager that follows the EWMH standard is running."};
  const Atoms& atoms = connection.atoms();
  std::vector<std::string> missing;
  const auto need = [&](xcb_atom_t atom, std::string_view name) {
    if (facts.supports(atom)) return;
    missing.push_back("The window manager does not support " + std::string(name) + ".");
  };
  need(atoms._NET_ACTIVE_WINDOW, "_NET_ACTIVE_WINDOW");
  need(atoms._NET_CLIENT_LIST, "_NET_CLIENT_LIST");
  need(atoms._NET_MOVERESIZE_WINDOW, "_NET_MOVERESIZE_WINDOW");
  need(atoms._NET_WM_STATE, "_NET_WM_STATE");
  need(atoms._NET_WM_STATE_HIDDEN, "_NET_WM_STATE_HIDDEN");
  need(atoms._NET_FRAME_EXTENTS, "_NET_FRAME_EXTENTS");
  return missing;
}

X11Trust::X11Trust(const Connection& connection, const ClientModel& model, MainQueue& mainQueue, Consent& consent)
    : connection_(connection), model_(model), mainQueue_(mainQueue), consent_(consent), xwayland_(isXwayland(connection)) {}

bool X11Trust::isProcessTrusted() { return consent_.isGiven() && model_.isReady() && missing().empty(); }

bool X11Trust::isProcessTrusted(bool prompt) {
  const bool trusted = isProcessTrusted();
  if (!trusted && prompt) this->prompt();
  return trusted;
}

void X11Trust::prompt() {
  const auto lacking = missing();
  if (lacking.empty()) return consent_.ask({});
  if (xwayland_) return consent_.ask(lacking);
  if (std::exchange(questionWaits_, true)) return;
  const std::weak_ptr<bool> alive = alive_;
  mainQueue_.postAfter(startTime, [this, alive] {
    if (alive.expired() || !questionWaits_) return;
    consent_.ask(missing());
  });
}

void X11Trust::supportChanged() {
  if (!questionWaits_ || !missing().empty()) return;
  questionWaits_ = false;
  if (!consent_.isGiven()) consent_.ask({});
}

}  // namespace tilora::x11
