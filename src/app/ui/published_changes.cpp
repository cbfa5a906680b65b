// One queued call for the changes of one turn.
#include "app/ui/published_changes.h"

#include <QMetaObject>
#include <utility>

namespace tilora::app {

PublishedChanges::PublishedChanges(WindowManagerController& controller, std::function<void()> changed)
    : changed_(std::move(changed)), observer_(controller.observeWillChange([this](PublishedProperty) { expect(); })) {}

void PublishedChanges::expect() {
  if (std::exchange(pending_, true)) return;
  QMetaObject::invokeMethod(
      &context_,
      [this] {
        pending_ = false;
        changed_();
      },
      Qt::QueuedConnection);
}

}  // namespace tilora::app
