// Telling views of changes after they happened.
#pragma once

#include <QObject>
#include <functional>

#include "controller/window_manager_controller.h"

namespace tilora::app {

/// The controller says that a value is about to change; this says so once the values of that turn of the event loop are there.
class PublishedChanges {
 public:
  /// The controller must outlive it.
  PublishedChanges(WindowManagerController& controller, std::function<void()> changed);

  /// Something else that is shown changes in this turn.
  void expect();

 private:
  std::function<void()> changed_;
  bool pending_ = false;
  /// Receives the queued call, which ends with it.
  QObject context_;
  Subscription observer_;
};

}  // namespace tilora::app
