// What a simulated application tells of its windows, and how it is hidden and shown.
#include "platform/simulated/simulated_application.h"

namespace tilora::simulated {

void SimulatedApplication::hide() {
  traits_.hidden = true;
  report_(ApplicationHidden{pid_});
}

void SimulatedApplication::unhide() {
  traits_.hidden = false;
  report_(ApplicationUnhidden{pid_});
}

std::optional<AttributeValue> ApplicationElement::value(AttributeName name) const {
  if (!application_) return std::nullopt;
  if (name == AttributeName::windows && !application_->windowsUnreadable) return application_->windows.elements();
  if (name == AttributeName::focusedWindow && application_->focusedWindow) return Element(application_->focusedWindow);
  return std::nullopt;
}

}  // namespace tilora::simulated
