// Restoring on the current desktop, in place elsewhere, or by a visit.
#include "platform/x11/clean_end.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <ranges>
#include <utility>
#include <vector>

#include "platform/x11/property.h"
#include "platform/x11/requests.h"
#include "platform/x11/unmanaged_windows.h"

namespace tilora::x11 {
namespace {

using Clock = std::chrono::steady_clock;

/// A manager that does not do what it was asked for does not keep the program from ending.
constexpr auto longestWait = std::chrono::milliseconds(250);
/// As long as it has not shown the windows it may be about to go, and then nobody would.
constexpr auto longestRestore = std::chrono::seconds(2);

std::vector<ClientWindowRef> hiddenWindows(const ClientModel& model) {
  std::vector<ClientWindowRef> hidden;
  for (const auto& window : model.windows()) {
    // One that has not become iconic yet may do so after the end.
    if (window->marks.any() || window->storedMarks.any() || window->refusesHiding) hidden.push_back(window);
  }
  std::ranges::stable_sort(hidden, {}, [](const ClientWindowRef& window) { return window->focusSerial; });
  return hidden;
}

/// The windows that are seen now, bottom to top.
std::vector<xcb_window_t> shownStack(DesktopState& state) {
  xcb_connection_t* xcb = state.connection.xcb();
  constexpr std::uint32_t longest = 65536;
  const auto cookie =
      xcb_get_property(xcb, 0, state.connection.root(), state.connection.atoms()._NET_CLIENT_LIST_STACKING, XCB_ATOM_WINDOW, 0, longest);
  const Property property{Reply<xcb_get_property_reply_t>{xcb_get_property_reply(xcb, cookie, nullptr)}};
  std::vector<xcb_window_t> shown;
  for (const auto id : property.items(XCB_ATOM_WINDOW)) {
    const auto window = state.model.find(id);
    if (window && window->isOrdinary() && !window->states.hidden && window->isOn(state.model.facts().currentDesktop)) shown.push_back(id);
  }
  return shown;
}

bool isManagerGone(const DesktopState& state) { return state.model.facts().windowManager == XCB_WINDOW_NONE; }

class CleanEnd {
 public:
  explicit CleanEnd(DesktopState& state)
      : state_(state), connection_(state.connection), traits_(traitsOf(state.model.facts().windowManagerName)), time_(state.clock.now()) {}

  void restoreHere(const std::vector<ClientWindowRef>& windows) {
    const auto shown = shownStack(state_);
    for (const auto& window : windows) {
      window->marks = {};
      // There is no second attempt.
      window->mapIsNoRequest = isMapped(*window);
      state_.hides.restore(*window, traits_, time_);
    }
    for (const auto id : shown) requestRaise(connection_, id);
    const auto areShown = [&] {
      return std::ranges::none_of(windows, [](const ClientWindowRef& window) { return window->states.hidden; });
    };
    follow(areShown, longestRestore);
  }

  void restoreOn(std::uint32_t desktop, const std::vector<ClientWindowRef>& windows) {
    const bool visit = traits_.elsewhere == RestoreElsewhere::unreliable;
    if (visit) requestCurrentDesktop(connection_, desktop, time_);
    for (const auto& window : windows) {
      window->marks = {};
      state_.hides.storeMarks(*window);
      if (visit) {
        requestActivation(connection_, window->id, time_);
      } else {
        xcb_map_window(connection_.xcb(), window->id);
      }
      if (traits_.elsewhere == RestoreElsewhere::movesHere) requestDesktop(connection_, window->id, desktop);
    }
    visited_ |= visit;
  }

  void comeBack(std::uint32_t desktop) {
    if (!visited_) return;
    requestCurrentDesktop(connection_, desktop, time_);
    follow([&] { return state_.model.facts().currentDesktop == desktop; });
  }

  /// Gives the focus back once it has arrived at `last`: managers ignore a request that comes before they have noticed.
  void focus(const ClientWindowRef& window, const ClientWindowRef& last) {
    if (!window) return;
    if (last) follow([&] { return state_.model.facts().active == last->id; });
    requestActivation(connection_, window->id, state_.clock.now());
    follow([&] { return state_.model.facts().active == window->id; });
  }

 private:
  bool isMapped(const ClientWindow& window) const {
    xcb_connection_t* xcb = connection_.xcb();
    const auto cookie = xcb_get_window_attributes(xcb, window.id);
    const Reply<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(xcb, cookie, nullptr)};
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
  }

  /// Takes in events until `holds` answers true or nobody is left who could bring it about, for `longest` at most.
  template <class Predicate>
  void follow(Predicate holds, std::chrono::milliseconds longest = longestWait) {
    connection_.flush();
    const auto deadline = Clock::now() + longest;
    while (true) {
      while (const auto event = state_.events.poll()) state_.model.handleEvent(*event);
      state_.model.refresh();
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
      if (holds() || isManagerGone(state_) || left.count() <= 0 || connection_.failed() || !state_.events.waitForInput(left)) return;
    }
  }

  DesktopState& state_;
  Connection& connection_;
  WindowManagerTraits traits_;
  xcb_timestamp_t time_;
  bool visited_ = false;
};

/// Returns when the server has taken in every request.
void synchronize(xcb_connection_t* xcb) {
  Reply<xcb_get_input_focus_reply_t>{xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr)};
}

/// Asks the manager for every hidden window that it lists; answers these.
std::vector<ClientWindowRef> askManager(DesktopState& state) {
  auto hidden = hiddenWindows(state.model);
  if (hidden.empty()) return hidden;
  const auto focused = state.activeWindow();
  const std::uint32_t current = state.model.facts().currentDesktop;
  std::vector<ClientWindowRef> here;
  std::map<std::uint32_t, std::vector<ClientWindowRef>> elsewhere;
  for (const auto& window : hidden) {
    if (window->isOn(current)) {
      here.push_back(window);
    } else {
      elsewhere[*window->desktop].push_back(window);
    }
  }
  CleanEnd end(state);
  for (const auto& [desktop, windows] : elsewhere) end.restoreOn(desktop, windows);
  end.comeBack(current);
  end.restoreHere(here);
  end.focus(focused, here.empty() ? nullptr : here.back());
  return hidden;
}

}  // namespace

void showHiddenWindows(DesktopState& state) {
  std::vector<ClientWindowRef> asked;
  if (!isManagerGone(state)) asked = askManager(state);
  synchronize(state.connection.xcb());
  // A manager that ends takes the windows off its list first: what still has a mark now it was not asked for.
  auto left = markedWindows(state.connection);
  while (const auto event = state.events.poll()) state.model.handleEvent(*event);
  state.model.refresh();
  const bool isGone = isManagerGone(state);
  if (isGone) {
    // Nor will it do what it was asked for.
    for (const auto& window : asked) left.push_back(window->id);
  }
  if (left.empty()) return;
  const bool nobodyIsLeft = awaitManagersEnd(state.connection);
  // One that is still there has its reasons not to list a window.
  if (!isGone && !nobodyIsLeft) return;
  for (const auto window : left) showUnmanaged(state.connection, window);
  synchronize(state.connection.xcb());
}

}  // namespace tilora::x11
