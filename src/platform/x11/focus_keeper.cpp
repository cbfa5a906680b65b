// Holding the keyboard, giving the focus back, and telling the user's choices from our own doing.
#include "platform/x11/focus_keeper.h"

#include <algorithm>
#include <utility>

#include "platform/x11/hide_writer.h"
#include "platform/x11/requests.h"

namespace tilora::x11 {
namespace {

/// No longer than this a key press waits and a change of focus goes unreported, whatever the window manager does.
constexpr auto longestHold = std::chrono::milliseconds(250);
/// A manager that is busy may move the focus so much later.
constexpr auto longestWatch = std::chrono::milliseconds(1500);

}  // namespace

FocusKeeper::FocusKeeper(Connection& connection, const ClientModel& model, MainQueue& mainQueue, ServerClock& clock,
                         ManagerBarrier& barrier, std::function<void()> changed)
    : connection_(connection), model_(model), mainQueue_(mainQueue), clock_(clock), barrier_(barrier), changed_(std::move(changed)) {}

FocusKeeper::~FocusKeeper() {
  if (hold_) end();
}

void FocusKeeper::hold(const std::vector<ClientWindowRef>& restored, const WindowManagerTraits& traits) {
  if (!hold_) {
    hold_ = Hold{};
    const auto anchor = model_.find(reported_);
    // A manager may tell that a window has the focus before it tells that it is no longer iconic.
    if (anchor && !anchor->marks.any() && anchor->isOn(model_.facts().currentDesktop)) hold_->anchor = reported_;
  }
  choice_.reset();
  hold_->restored.insert(hold_->restored.end(), restored.begin(), restored.end());
  const auto activates = [&](const ClientWindowRef& window) { return HideWriter::activates(*window, traits); };
  hold_->expectsFocus = traits.restoreFocuses || hold_->anchor == XCB_WINDOW_NONE || std::ranges::any_of(restored, activates);
  hold_->target = targetOf(*hold_, traits);
  hold_->askedBack = false;
  if (hold_->expectsFocus) holdKeyboard();
}

xcb_window_t FocusKeeper::targetOf(const Hold& hold, const WindowManagerTraits& traits) {
  const auto isOther = [&](const ClientWindowRef& window) { return window->id != hold.anchor; };
  const auto last = std::ranges::find_if(hold.restored.rbegin(), hold.restored.rend(), isOther);
  return traits.restoreFocuses && last != hold.restored.rend() ? (*last)->id : hold.restored.back()->id;
}

void FocusKeeper::holdKeyboard() {
  // With the keyboard frozen its events stay in the server, and go to whoever has the focus once they are let go.
  const auto cookie =
      xcb_grab_keyboard(connection_.xcb(), 0, connection_.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
  xcb_discard_reply(connection_.xcb(), cookie.sequence);
  hold_->keyboardIsHeld = true;
}

void FocusKeeper::giveBack(const WindowManagerTraits& traits) {
  hold_->managerAnswers = traits.answersFrameExtents && model_.facts().supports(connection_.atoms()._NET_REQUEST_FRAME_EXTENTS);
  hold_->sent = true;
  if (hold_->expectsFocus && !traits.restoreFocuses) requestActivation(connection_, hold_->target, clock_.now());
  if (hold_->managerAnswers) hold_->questionAfterRestores = barrier_.ask();
  startGuard(longestHold);
}

/// Whether the manager says that it has dealt with the restores.
bool FocusKeeper::restoresAreDone() const { return hold_->managerAnswers && barrier_.isAnswered(hold_->questionAfterRestores); }

/// Whether the focus may yet move to what was restored: the manager has not dealt with the restores, or cannot be asked.
bool FocusKeeper::isStillToCome() const { return hold_->expectsFocus && !hold_->askedBack && !restoresAreDone(); }

bool FocusKeeper::hasArrived(xcb_window_t active) const {
  // It may have gone there and on to the anchor, where that is restored as well, before anybody looked.
  const bool isLast = active == hold_->anchor && hold_->restored.back()->id == active;
  if (hold_->expectsFocus) return active == hold_->target || (isLast && restoresAreDone());
  return active != XCB_WINDOW_NONE && active != hold_->anchor;
}

void FocusKeeper::askBack() {
  hold_->askedBack = true;
  if (hold_->anchor == XCB_WINDOW_NONE) hold_->anchor = hold_->target;
  requestActivation(connection_, hold_->anchor, clock_.now());
  hold_->question = barrier_.ask();
  connection_.flush();
}

bool FocusKeeper::isOurs(xcb_window_t active, const Hold& hold) {
  if (active == XCB_WINDOW_NONE || active == hold.anchor) return true;
  return std::ranges::any_of(hold.restored, [&](const ClientWindowRef& window) { return window->id == active; });
}

bool FocusKeeper::undoesChoice(xcb_window_t active) {
  if (active == choice_->window || !isOurs(active, choice_->overridden)) return false;
  if (!std::exchange(choice_->repeated, true)) {
    requestActivation(connection_, choice_->window, clock_.now());
    connection_.flush();
  }
  return true;
}

bool FocusKeeper::update() {
  const xcb_window_t active = model_.facts().active;
  if (choice_ && undoesChoice(active)) return false;
  if (hold_ && !isOurs(active, *hold_)) {
    if (hold_->askedBack) choice_ = Choice{active, *hold_, false};
    end();
    if (choice_) startGuard(longestHold);
  }
  if (const auto anchor = hold_ ? model_.find(hold_->anchor) : nullptr; anchor && anchor->isMinimizedByUser()) end();
  if (hold_) {
    if (hold_->sent && !hold_->askedBack && hasArrived(active)) askBack();
    if (hold_->askedBack && hold_->managerAnswers && barrier_.isAnswered(hold_->question)) releaseKeyboard();
    const bool isBack = hold_->askedBack && active == hold_->anchor;
    if (!isBack || (hold_->keyboardIsHeld && hold_->managerAnswers)) return false;
    end();
  }
  return std::exchange(reported_, active) != active;
}

void FocusKeeper::releaseKeyboard() {
  if (!std::exchange(hold_->keyboardIsHeld, false)) return;
  xcb_ungrab_keyboard(connection_.xcb(), XCB_CURRENT_TIME);
  connection_.flush();
}

void FocusKeeper::end() {
  releaseKeyboard();
  hold_.reset();
  ++generation_;
}

void FocusKeeper::startGuard(std::chrono::milliseconds delay) {
  const std::weak_ptr<bool> alive = alive_;
  mainQueue_.postAfter(delay, [this, alive, delay, generation = ++generation_] {
    if (!alive.expired() && generation == generation_) guardElapsed(delay != longestHold);
  });
}

void FocusKeeper::guardElapsed(bool isLast) {
  choice_.reset();
  const xcb_window_t active = model_.facts().active;
  if (hold_) {
    releaseKeyboard();
    if (isStillToCome() && !isLast) return startGuard(longestWatch - longestHold);
    const xcb_window_t anchor = hold_->anchor;
    const bool strayed = active != anchor && isOurs(active, *hold_) && model_.find(anchor) != nullptr;
    end();
    // The manager was slow or refused: ask once more.
    if (strayed) {
      requestActivation(connection_, anchor, clock_.now());
      connection_.flush();
    }
  }
  if (std::exchange(reported_, active) != active) changed_();
}

}  // namespace tilora::x11
