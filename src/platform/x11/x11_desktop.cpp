// From events to the engine's notifications, and from the engine's writes to requests.
#include "platform/x11/x11_desktop.h"

#include <unistd.h>
#include <xcb/randr.h>

#include <algorithm>
#include <deque>
#include <utility>

#include "platform/x11/clean_end.h"
#include "platform/x11/desktop_state.h"
#include "platform/x11/elements.h"
#include "platform/x11/event_type.h"
#include "platform/x11/helper_window.h"
#include "platform/x11/hot_keys.h"
#include "platform/x11/pointer.h"
#include "platform/x11/requests.h"
#include "platform/x11/session_support.h"
#include "platform/x11/x11_workspace.h"
#include "platform/x11/xsettings.h"

namespace tilora::x11 {
namespace {

/// Answers bring events that make more reads necessary; after so many rounds the rest waits for the next turn.
constexpr int mostTurns = 16;
/// Dialogs of dialogs are followed so far.
constexpr int deepestDialog = 8;
/// When a request without an effect is looked at again, and when a new window manager is believed.
constexpr auto reviewTime = std::chrono::milliseconds(1050);
constexpr auto managerReviewTime = std::chrono::milliseconds(3100);
/// How long a window that was just shown waits until it is known whether it has the focus: after the manager has dealt with it, where the
/// manager cannot be asked, and at most.
constexpr auto settlingAnswered = std::chrono::milliseconds(100);
constexpr auto settlingUnasked = std::chrono::milliseconds(300);
constexpr auto longestSettling = std::chrono::milliseconds(1500);
/// How long a window that is given the focus back may take to have it.
constexpr auto longestReturn = std::chrono::milliseconds(1000);

}  // namespace

class X11Desktop::Parts {
 public:
  Parts(Connection& connection, Instance& instance, MainQueue& mainQueue, Consent& consent)
      : connection_(connection),
        instance_(instance),
        mainQueue_(mainQueue),
        helper_(connection),
        state(connection, helper_.id(), mainQueue, [this] { focusMoved(); }),
        accessibility(state),
        workspace(state, mainQueue),
        screens(state),
        windowServer(state),
        trust(connection, state.model, mainQueue, consent),
        keyMonitor([this] { return isOwn(state.activeWindow()); }),
        hotKeys(connection, keyMonitor),
        pointer(connection, hotKeys),
        settings(connection, [this] {
          if (themeChanged) themeChanged();
        }) {
    selectScreenEvents();
    state.updateScreens();
    settle();
  }

  bool takeEvents(bool readSocket) {
    while (const auto event = readSocket ? state.events.poll() : state.events.pollQueued()) take(*event);
    settle();
    return !connection_.failed();
  }

  bool endTurn() {
    for (int round = 0; round < mostTurns; ++round) {
      if (!takeEvents(false)) return false;
      commit();
      const auto late = state.events.pollQueued();
      if (!late) break;
      take(*late);
    }
    state.clock.setTimeOfTurn(std::nullopt);
    return !connection_.failed();
  }

  void returnFocus(std::function<void()> then) {
    ClientWindowRef last;
    for (const auto& window : state.model.windows()) {
      const bool isLater = window->focusSerial > (last ? last->focusSerial : 0);
      if (isLater && window->isOrdinary() && !isOwn(window)) last = window;
    }
    if (!last) return;
    awaited_ = {.window = last->id, .then = std::move(then)};
    const std::weak_ptr<bool> alive = alive_;
    mainQueue_.postAfter(longestReturn, [this, alive, number = ++lastAwaited_] {
      if (!alive.expired() && number == lastAwaited_) awaited_ = {};
    });
    requestActivation(connection_, last->id, state.clock.now());
    connection_.flush();
    focusReturned();
  }

 private:
  Connection& connection_;
  Instance& instance_;
  MainQueue& mainQueue_;
  HelperWindow helper_;

  /// Windows of which something is known once the manager has answered.
  struct Questioned {
    std::vector<ClientWindowRef> windows;
    std::uint64_t question = 0;
  };
  /// Windows that were shown together.
  std::deque<Questioned> settling_;
  /// Windows that ought to have become iconic by now.
  std::deque<Questioned> overdue_;
  /// All windows that were shown and have not settled when this was last looked through.
  std::vector<ClientWindowRef> unsettled_;
  bool isTakingKey_ = false;
  std::deque<xcb_key_press_event_t> laterKeys_;
  bool screensAreStale_ = false;
  bool reviewIsDue_ = false;
  bool managerIsNew_ = false;
  std::uint64_t lastFocusSerial_ = 0;
  ClientWindowRef lastFocused_;
  /// The window that is given the focus back, and what is to be done then.
  struct Awaited {
    xcb_window_t window = XCB_WINDOW_NONE;
    std::function<void()> then;
  };
  Awaited awaited_;
  std::uint64_t lastAwaited_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);

 public:
  DesktopState state;
  X11Accessibility accessibility;
  X11Workspace workspace;
  X11Screens screens;
  X11WindowServer windowServer;
  X11Trust trust;
  X11KeyMonitor keyMonitor;
  X11HotKeys hotKeys;
  X11Pointer pointer;
  XSettings settings;
  std::function<void()> themeChanged;

 private:
  static bool isOwn(const ClientWindowRef& window) { return window && window->application == static_cast<ProcessId>(::getpid()); }

  void focusReturned() {
    const auto active = state.activeWindow();
    if (awaited_.then && active && active->id == awaited_.window) mainQueue_.post(std::exchange(awaited_, {}).then);
  }

  void selectScreenEvents() {
    if (connection_.extensions().randrOpcode == 0) return;
    xcb_randr_select_input(connection_.xcb(), connection_.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
  }

  void take(const xcb_generic_event_t& event) {
    const std::uint8_t type = typeOf(event);
    if (type == 0) return;  // an error: the window it was about is gone
    if (isTakingKey_ && (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)) {
      laterKeys_.push_back(reinterpret_cast<const xcb_key_press_event_t&>(event));
      return;
    }
    if (type == XCB_KEY_PRESS) return takeKey(event);
    if (instance_.handleEvent(event) || hotKeys.handleEvent(event) || settings.handleEvent(event)) return;
    const std::uint8_t randr = connection_.extensions().randrFirstEvent;
    const bool isRandr = randr != 0 && (type == randr + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randr + XCB_RANDR_NOTIFY);
    const bool isRoot =
        type == XCB_CONFIGURE_NOTIFY && reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == connection_.root();
    screensAreStale_ |= isRandr || isRoot;
    state.barrier.handleEvent(event);
    state.model.handleEvent(event);
  }

  /// A command works on the desktop as it is at this moment, and leaves at once. Keys that arrive meanwhile come after it.
  void takeKey(const xcb_generic_event_t& event) {
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    isTakingKey_ = true;
    settle();
    state.clock.setTimeOfTurn(key.time);
    pointer.setKnownState(key.state);
    hotKeys.handleEvent(event);
    pointer.setKnownState(std::nullopt);
    commit();
    isTakingKey_ = false;
    while (!laterKeys_.empty()) {
      const xcb_key_press_event_t later = laterKeys_.front();
      laterKeys_.pop_front();
      take(reinterpret_cast<const xcb_generic_event_t&>(later));
    }
  }

  void commit() {
    if (state.changes.commit()) scheduleReview(reviewTime);
    if (state.focus.holdsKeyboard()) hotKeys.keyboardTaken();
  }

  void settle() {
    for (int round = 0; round < mostTurns; ++round) {
      state.model.refresh();
      apply(state.model.takeChanges());
      auto event = state.events.pollQueued();
      if (!event) return;
      for (; event; event = state.events.pollQueued()) take(*event);
    }
  }

  void apply(const ModelChanges& changes) {
    if (changes.windowManager) {
      state.barrier.forgetQuestions();
      overdue_.clear();
    }
    managerIsNew_ |= changes.windowManager;
    if (managerIsNew_ && state.model.isReady()) windowManagerTookOver();
    if (changes.windowManager || changes.support) trust.supportChanged();
    settleWindows(changes);
    followShown(changes.shown);
    repeatWhatWasLeftOut();
    bool screensChanged = false;
    if (std::exchange(screensAreStale_, false) || changes.struts || changes.desktop) screensChanged = state.updateScreens();
    const bool focusChanged = state.focus.update();
    if (focusChanged) stampFocus();
    if (changes.windows || changes.vanished || !changes.appeared.empty() || focusChanged || changes.desktop) {
      const auto applications = state.applications.update();
      state.applications.settleHiding();
      if (applications.launched) workspace.notify(WorkspaceEvent::launched);
      if (applications.terminated) workspace.notify(WorkspaceEvent::terminated);
    }
    if (changes.any() || screensChanged || focusChanged) state.updateCoveredMonitors();
    if (focusChanged) {
      workspace.notify(WorkspaceEvent::activated);
      focusReturned();
    }
    if (changes.desktop) workspace.notify(WorkspaceEvent::spaceChanged);
    if (screensChanged) workspace.notify(WorkspaceEvent::screensChanged);
  }

  void settleWindows(const ModelChanges& changes) {
    for (const auto& window : changes.appeared) state.hides.adopt(*window);
    for (const auto& window : changes.touched) {
      if (window->isGone) continue;
      state.frames.changed(*window);
      if (state.model.isSettled()) state.hides.settle(*window);
    }
    if (changes.desktop || changes.windows) {
      for (const auto& window : state.model.windows()) {
        if (HideWriter::isToBeRestored(*window)) state.changes.written(window);
      }
    }
  }

  /// Whether the manager tells when it has dealt with what it was asked.
  bool managerAnswers() const {
    return traitsOf(state.model.facts().windowManagerName).answersFrameExtents &&
           state.model.facts().supports(connection_.atoms()._NET_REQUEST_FRAME_EXTENTS);
  }

  /// Whether the user works in the window, or in a dialog of its.
  bool isInUse(const ClientWindow& window) const {
    auto used = state.model.find(state.model.facts().active);
    // Windows may claim to be each other's parents.
    for (int depth = 0; used && depth < deepestDialog; ++depth) {
      if (used.get() == &window) return true;
      used = used->isTransient() ? state.model.find(used->transientFor) : nullptr;
    }
    return false;
  }

  /// Asks again for windows that are not iconic although the manager has dealt with the request; not for one that would go while the user
  /// works in it.
  void repeatWhatWasLeftOut() {
    for (; !overdue_.empty() && state.barrier.isAnswered(overdue_.front().question); overdue_.pop_front()) {
      for (const auto& window : overdue_.front().windows) {
        if (!window->isGone && !isInUse(*window) && !state.isDesktopShown()) state.hides.repeat(*window);
      }
      connection_.flush();
    }
  }

  /// A window that was just shown may have the focus by now, which the manager tells later.
  void followShown(const std::vector<ClientWindowRef>& shown) {
    const auto now = std::chrono::steady_clock::now();
    if (!shown.empty()) {
      const bool answers = managerAnswers();
      for (const auto& window : shown) window->settlesAt = now + (answers ? longestSettling : settlingUnasked);
      unsettled_.insert(unsettled_.end(), shown.begin(), shown.end());
      stampFocus();
      if (answers) settling_.push_back({shown, state.barrier.ask()});
      connection_.flush();
    }
    while (!settling_.empty() && state.barrier.isAnswered(settling_.front().question)) {
      for (const auto& window : settling_.front().windows) window->settlesAt = std::min(window->settlesAt, now + settlingAnswered);
      settling_.pop_front();
    }
    // What has settled is not asked for the time any more, which every pass would do several times for each window.
    std::erase_if(unsettled_, [now](const ClientWindowRef& window) {
      if (now < window->settlesAt) return false;
      window->settlesAt = {};
      return true;
    });
  }

  void windowManagerTookOver() {
    managerIsNew_ = false;
    for (const auto& window : state.model.windows()) {
      HideWriter::forgetRequests(*window);
      window->frame = {};
      window->frame.unsure = true;
      state.model.reread(*window);
    }
    scheduleReview(managerReviewTime);
  }

  /// The focus was handed on outside of an event.
  void focusMoved() {
    stampFocus();
    state.applications.update();
    state.updateCoveredMonitors();
    workspace.notify(WorkspaceEvent::activated);
    focusReturned();
  }

  void stampFocus() {
    const auto window = state.activeWindow();
    if (!window) return;
    // If it refused to hide, it was in use.
    if (lastFocused_) lastFocused_->refusesHiding = false;
    lastFocused_ = window;
    window->focusSerial = ++lastFocusSerial_;
    window->refusesHiding = false;
    window->settlesAt = {};
  }

  void scheduleReview(std::chrono::milliseconds delay) {
    if (delay == reviewTime && std::exchange(reviewIsDue_, true)) return;
    const std::weak_ptr<bool> alive = alive_;
    mainQueue_.postAfter(delay, [this, alive, delay] {
      if (alive.expired()) return;
      if (delay == reviewTime) reviewIsDue_ = false;
      review(delay == managerReviewTime);
    });
  }

  /// Looks at every window of which something was asked a moment ago. A new window manager has dealt with all of them by now; what was
  /// asked before may have been lost between it and the one before, and says nothing of what the windows refuse.
  void review(bool managerIsNew) {
    bool open = false;
    const auto now = std::chrono::steady_clock::now();
    const bool answers = managerAnswers();
    Questioned overdue;
    for (const auto& window : state.model.windows()) {
      if (managerIsNew || now - window->frame.sentAt < 2 * reviewTime) state.model.reread(*window);
      if (state.model.isSettled()) state.hides.settle(*window);
      if (answers && HideWriter::waitsLonger(*window, now)) {
        overdue.windows.push_back(window);
      } else if (state.hides.expire(*window, now) && HideWriter::isToBeRestored(*window)) {
        state.changes.written(window);
      }
      if (managerIsNew) window->refusesHiding = false;
      open |= window->iconRequest != IconRequest::none;
    }
    state.applications.settleHiding();
    if (!overdue.windows.empty()) {
      overdue.question = state.barrier.ask();
      overdue_.push_back(std::move(overdue));
      connection_.flush();
    }
    if (open) scheduleReview(reviewTime);
  }
};

X11Desktop::X11Desktop(Connection& connection, Instance& instance, MainQueue& mainQueue, Consent& consent)
    : parts_(std::make_unique<Parts>(connection, instance, mainQueue, consent)) {}

X11Desktop::~X11Desktop() = default;

Accessibility& X11Desktop::accessibility() { return parts_->accessibility; }
Workspace& X11Desktop::workspace() { return parts_->workspace; }
Screens& X11Desktop::screens() { return parts_->screens; }
Pointer& X11Desktop::pointer() { return parts_->pointer; }
WindowServer& X11Desktop::windowServer() { return parts_->windowServer; }
Trust& X11Desktop::trust() { return parts_->trust; }
HotKeys& X11Desktop::hotKeys() { return parts_->hotKeys; }
KeyMonitor& X11Desktop::keyMonitor() { return parts_->keyMonitor; }

bool X11Desktop::monitorKey(xcb_keycode_t keycode, std::uint16_t state) {
  if (!parts_->keyMonitor.isInstalled()) return false;
  const auto event = parts_->hotKeys.keyEventFor(keycode, state);
  if (event && !isModifierKey(event->keyCode)) parts_->keyMonitor.deliver(*event);
  return true;
}

void X11Desktop::activate(xcb_window_t window) {
  Connection& connection = parts_->state.connection;
  requestActivation(connection, window, parts_->state.clock.now());
  requestRaise(connection, window);
  connection.flush();
}

void X11Desktop::returnFocus(std::function<void()> then) { parts_->returnFocus(std::move(then)); }
void X11Desktop::keyboardTaken() { parts_->hotKeys.keyboardTaken(); }
const std::string& X11Desktop::themeName() const { return parts_->settings.themeName(); }
void X11Desktop::onThemeChanged(std::function<void()> changed) { parts_->themeChanged = std::move(changed); }

std::vector<std::string> X11Desktop::missingSupport() const { return parts_->trust.missing(); }

int X11Desktop::fileDescriptor() const { return xcb_get_file_descriptor(parts_->state.connection.xcb()); }
bool X11Desktop::dispatch() { return parts_->takeEvents(true); }
bool X11Desktop::endTurn() { return parts_->endTurn(); }

bool X11Desktop::showHiddenWindows() {
  if (parts_->takeEvents(true)) tilora::x11::showHiddenWindows(parts_->state);
  return !parts_->state.connection.failed();
}

}  // namespace tilora::x11
