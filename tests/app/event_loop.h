// An event loop to test on.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <array>
#include <functional>

namespace tilora::app {

/// The program object that Qt wants before anything else.
class EventLoop {
 public:
  /// Runs the loop until `done`, or until it is plainly not going to be: false then.
  bool runUntil(const std::function<bool()>& done) {
    const QDeadlineTimer deadline(20000);
    while (!done()) {
      if (deadline.hasExpired()) return false;
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
  }

 private:
  int argumentCount_ = 1;
  std::array<char, 5> name_ = {'t', 'e', 's', 't', '\0'};
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  QCoreApplication application_{argumentCount_, arguments_.data()};
};

}  // namespace tilora::app
