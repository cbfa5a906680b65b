// Questions about the desktop that concern more than one of its parts.
#include "platform/x11/desktop_state.h"

#include <algorithm>

namespace tilora::x11 {

DesktopState::DesktopState(Connection& server, xcb_window_t helper, MainQueue& mainQueue, std::function<void()> focusChanged)
    : connection(server),
      events(server),
      clock(server, events, helper),
      barrier(server, helper),
      model(server),
      focus(server, model, mainQueue, clock, barrier, std::move(focusChanged)),
      frames(server, layout),
      hides(server),
      changes(server, model, frames, hides, focus, clock),
      applications(model, [this](const ClientWindowRef& window) { changes.written(window); }) {}

ClientWindowRef DesktopState::activeWindow() const {
  auto window = model.find(focus.reported());
  if (!window || window->type == WindowType::desktop || window->type == WindowType::dock) return nullptr;
  return window;
}

bool DesktopState::isDesktopShown() const {
  if (!model.facts().showingDesktop) return false;
  const auto active = model.find(model.facts().active);
  return !active || !active->isOrdinary() || active->states.hidden;
}

bool DesktopState::isListed(const ClientWindow& window) const {
  const auto& facts = model.facts();
  if (isDesktopShown() || !window.isOn(facts.currentDesktop) || window.isSettling()) return false;
  // As nearly always: then it need not be worked out where the window is.
  if (covered_.empty()) return true;
  const auto monitor = monitorOf(window);
  return !monitor || *monitor >= covered_.size() || !covered_[*monitor];
}

std::optional<std::size_t> DesktopState::monitorOf(const ClientWindow& window) const {
  const PixelRect visible = window.visible();
  return layout.monitorAt(visible.centerX(), visible.centerY());
}

Rect DesktopState::accessibilityFrame(const ClientWindow& window) const {
  const PixelRect visible = window.visible();
  return {static_cast<double>(visible.x), static_cast<double>(visible.y - layout.top()), static_cast<double>(visible.width),
          static_cast<double>(visible.height)};
}

bool DesktopState::updateScreens() {
  std::vector<Strut> struts;
  for (const auto& window : model.windows()) {
    if (window->states.hidden || !window->isOn(model.facts().currentDesktop)) continue;
    if (window->strutPartial) {
      struts.push_back(*window->strutPartial);
    } else if (window->strut) {
      struts.push_back(*window->strut);
    }
  }
  return layout.update(readMonitors(connection), struts, readRootFrame(connection), model.facts().workArea);
}

void DesktopState::updateCoveredMonitors() {
  covered_.assign(layout.monitors().size(), false);
  for (const auto& window : model.windows()) {
    if (!window->isFullscreen() || window->states.hidden || !window->isOn(model.facts().currentDesktop)) continue;
    const PixelRect visible = window->visible();
    for (std::size_t i = 0; i < covered_.size(); ++i) {
      const PixelRect& monitor = layout.monitors()[i].frame;
      if (intersection(visible, monitor) == monitor) covered_[i] = true;
    }
  }
  if (std::ranges::find(covered_, true) == covered_.end()) covered_.clear();
  // A window that the user brought in front of a fullscreen one is worked with again.
  const auto active = activeWindow();
  if (!active || active->isFullscreen()) return;
  if (const auto monitor = monitorOf(*active); monitor && *monitor < covered_.size()) covered_[*monitor] = false;
}

}  // namespace tilora::x11
