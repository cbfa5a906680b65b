// How each attribute is answered from what is known of a window.
#include "platform/x11/elements.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tilora::x11 {
namespace {

std::string_view subrole(const ClientWindow& window) {
  if (window.isNormal()) return window.states.skipTaskbar ? "AXFloatingWindow" : "AXStandardWindow";
  if (window.type == WindowType::palette) return "AXFloatingWindow";
  if (window.isOrdinary()) return "AXDialog";
  return "AXUnknown";
}

std::optional<AttributeValue> textValue(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  return AttributeValue(*text);
}

/// Made once for each window: a pass asks for all of them.
Element elementOf(const ClientWindowRef& window, DesktopState& state) {
  if (!window->element) window->element = std::make_unique<WindowElement>(*window, state);
  return {window, window->element.get()};
}

}  // namespace

std::optional<AttributeValue> WindowElement::value(AttributeName name) const {
  if (window_.isGone) return std::nullopt;
  switch (name) {
    case AttributeName::role:
      return AttributeValue(std::string("AXWindow"));
    case AttributeName::subrole:
      return AttributeValue(std::string(subrole(window_)));
    case AttributeName::minimized:
      return AttributeValue(window_.isMinimizedByUser());
    case AttributeName::position: {
      const Rect frame = state_.accessibilityFrame(window_);
      return AttributeValue(Point{frame.x, frame.y});
    }
    case AttributeName::size: {
      const Rect frame = state_.accessibilityFrame(window_);
      return AttributeValue(Size{frame.width, frame.height});
    }
    case AttributeName::title:
      return textValue(window_.name ? window_.name : window_.legacyName);
    case AttributeName::identifier:
      return window_.roleIdentifies ? textValue(window_.role) : std::nullopt;
    case AttributeName::windowNumber:
      return AttributeValue(Number(static_cast<std::int64_t>(window_.id)));
    case AttributeName::hidden:
      return AttributeValue(window_.marks.window);
    default:
      return std::nullopt;
  }
}

bool WindowElement::canBeMoved() const {
  if (window_.isFullscreen()) return false;
  // Seen for the first time while it is maximised or iconic, it may have lost the action for so long.
  return !window_.listsActions || window_.mayMove || window_.states.maximized() || window_.states.hidden;
}

bool WindowElement::canBeResized() const {
  if (window_.isFullscreen() || window_.limits.isFixed()) return false;
  return !window_.listsActions || window_.mayResize || window_.states.maximized() || window_.states.hidden;
}

std::optional<bool> WindowElement::isSettable(AttributeName name) const {
  if (window_.isGone) return std::nullopt;
  switch (name) {
    case AttributeName::position:
      return canBeMoved();
    case AttributeName::size:
      return canBeResized();
    case AttributeName::hidden:
      return !window_.refusesHiding;
    default:
      return false;
  }
}

void WindowElement::set(AttributeName name, const BoxedValue& value) {
  if (window_.isGone) return;
  if (const auto* point = std::get_if<Point>(&value.value); point != nullptr && name == AttributeName::position) {
    if (!std::isfinite(point->x) || !std::isfinite(point->y)) return;
    window_.frame.position = state_.toRoot(*point);
  } else if (const auto* size = std::get_if<Size>(&value.value); size != nullptr && name == AttributeName::size) {
    if (!std::isfinite(size->width) || !std::isfinite(size->height)) return;
    window_.frame.size = *size;
  } else {
    return;
  }
  state_.changes.written(window_.shared_from_this());
}

void WindowElement::set(AttributeName name, bool value) {
  if (window_.isGone || name != AttributeName::hidden || window_.refusesHiding || window_.marks.window == value) return;
  window_.marks.window = value;
  state_.changes.written(window_.shared_from_this());
}

std::optional<AttributeValue> ApplicationElement::value(AttributeName name) const {
  const auto application = state_.applications.find(pid_);
  if (!application) return std::nullopt;
  if (name == AttributeName::windows) {
    std::vector<Element> elements;
    elements.reserve(application->windows().size());
    for (const auto& window : application->windows()) {
      if (state_.isListed(*window)) elements.push_back(elementOf(window, state_));
    }
    return AttributeValue(std::move(elements));
  }
  if (name == AttributeName::focusedWindow) {
    const auto active = state_.activeWindow();
    if (!active || active->application != pid_) return std::nullopt;
    return AttributeValue(elementOf(active, state_));
  }
  return std::nullopt;
}

std::optional<bool> ApplicationElement::isSettable(AttributeName) const {
  if (!state_.applications.find(pid_)) return std::nullopt;
  return false;
}

Element X11Accessibility::applicationElement(ProcessId pid) { return std::make_shared<ApplicationElement>(pid, state_); }

}  // namespace tilora::x11
