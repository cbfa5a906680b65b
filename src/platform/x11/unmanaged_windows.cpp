// Looking through the tree of windows, as no manager lists them.
#include "platform/x11/unmanaged_windows.h"

#include <xcb/xcb_icccm.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <thread>

#include "platform/x11/property.h"

namespace tilora::x11 {
namespace {

using Clock = std::chrono::steady_clock;

std::vector<xcb_window_t> childrenOf(xcb_connection_t* xcb, const std::vector<xcb_window_t>& parents) {
  std::vector<xcb_query_tree_cookie_t> questions;
  questions.reserve(parents.size());
  for (const auto parent : parents) questions.push_back(xcb_query_tree(xcb, parent));
  std::vector<xcb_window_t> children;
  for (const auto question : questions) {
    const Reply<xcb_query_tree_reply_t> tree{xcb_query_tree_reply(xcb, question, nullptr)};
    if (!tree) continue;
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    children.insert(children.end(), first, first + xcb_query_tree_children_length(tree.get()));
  }
  return children;
}

Property firstItem(xcb_connection_t* xcb, xcb_get_property_cookie_t question) {
  return Property{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(xcb, question, nullptr)}};
}

/// Whether a window manager holds the window, by the value of its WM_STATE.
bool isHeld(const Property& state, const Atoms& atoms) {
  return state.item(atoms.WM_STATE).value_or(XCB_ICCCM_WM_STATE_WITHDRAWN) != XCB_ICCCM_WM_STATE_WITHDRAWN;
}

/// Whether there is a window manager. Only one redirects on the root window, and nobody is told when it stops.
bool hasManager(const Connection& connection) {
  const auto question = xcb_get_window_attributes(connection.xcb(), connection.root());
  const Reply<xcb_get_window_attributes_reply_t> root{xcb_get_window_attributes_reply(connection.xcb(), question, nullptr)};
  return root && (root->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

/// Asks every few milliseconds, for two seconds at most; whether it came about.
template <typename Condition>
bool await(Condition isSo) {
  constexpr auto interval = std::chrono::milliseconds(5);
  constexpr auto longest = std::chrono::seconds(2);
  for (const auto deadline = Clock::now() + longest; Clock::now() < deadline; std::this_thread::sleep_for(interval)) {
    if (isSo()) return true;
  }
  return false;
}

std::vector<xcb_window_t> markedAmong(Connection& connection, const std::vector<xcb_window_t>& windows) {
  struct Question {
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_get_property_cookie_t mark = {};
    xcb_get_property_cookie_t state = {};
    xcb_get_window_attributes_cookie_t attributes = {};
  };
  xcb_connection_t* xcb = connection.xcb();
  const Atoms& atoms = connection.atoms();
  std::vector<Question> questions;
  questions.reserve(windows.size());
  for (const auto window : windows) {
    questions.push_back({.window = window,
                         .mark = xcb_get_property(xcb, 0, window, atoms._TILORA_HIDDEN, XCB_ATOM_CARDINAL, 0, 1),
                         .state = xcb_get_property(xcb, 0, window, atoms.WM_STATE, atoms.WM_STATE, 0, 1),
                         .attributes = xcb_get_window_attributes(xcb, window)});
  }
  std::vector<xcb_window_t> marked;
  for (const auto& question : questions) {
    const bool isMarked = firstItem(xcb, question.mark).isPresent();
    const bool isInUse = isHeld(firstItem(xcb, question.state), atoms);
    const Reply<xcb_get_window_attributes_reply_t> attributes{xcb_get_window_attributes_reply(xcb, question.attributes, nullptr)};
    const bool isMapped = attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    if (isMarked && (isInUse || isMapped)) marked.push_back(question.window);
  }
  return marked;
}

}  // namespace

std::vector<xcb_window_t> markedWindows(Connection& connection) {
  // Some managers have two windows around a client.
  constexpr int deepest = 3;
  std::vector<xcb_window_t> marked;
  std::vector<xcb_window_t> level = {connection.root()};
  for (int depth = 0; depth < deepest; ++depth) {
    level = childrenOf(connection.xcb(), level);
    const auto found = markedAmong(connection, level);
    marked.insert(marked.end(), found.begin(), found.end());
  }
  return marked;
}

bool awaitManagersEnd(Connection& connection) {
  return await([&] { return !hasManager(connection); });
}

bool awaitWithdrawal(const Connection& connection, xcb_window_t window) {
  const Atoms& atoms = connection.atoms();
  return await([&] {
    const auto question = xcb_get_property(connection.xcb(), 0, window, atoms.WM_STATE, atoms.WM_STATE, 0, 1);
    return !isHeld(firstItem(connection.xcb(), question), atoms) || !hasManager(connection);
  });
}

void showUnmanaged(Connection& connection, xcb_window_t window) {
  xcb_connection_t* xcb = connection.xcb();
  const Atoms& atoms = connection.atoms();
  constexpr std::uint32_t longest = 64;
  const auto question = xcb_get_property(xcb, 0, window, atoms._NET_WM_STATE, XCB_ATOM_ATOM, 0, longest);
  auto states = firstItem(xcb, question).items(XCB_ATOM_ATOM);
  if (std::erase(states, atoms._NET_WM_STATE_HIDDEN) > 0) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, atoms._NET_WM_STATE, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
  }
  constexpr std::array<std::uint32_t, 2> normalStateWithoutIcon = {XCB_ICCCM_WM_STATE_NORMAL, XCB_WINDOW_NONE};
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, atoms.WM_STATE, atoms.WM_STATE, 32, normalStateWithoutIcon.size(),
                      normalStateWithoutIcon.data());
  xcb_delete_property(xcb, window, atoms._TILORA_HIDDEN);
  xcb_map_window(xcb, window);
}

}  // namespace tilora::x11
