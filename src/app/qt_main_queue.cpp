// Posting through queued calls and timers.
#include "app/qt_main_queue.h"

#include <QMetaObject>
#include <QPointer>
#include <QTimer>

namespace tilora::app {

void QtMainQueue::post(std::function<void()> work) { QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection); }

void QtMainQueue::postAfter(std::chrono::milliseconds delay, std::function<void()> work) {
  QTimer::singleShot(delay, Qt::PreciseTimer, &context_, std::move(work));
}

Subscription QtMainQueue::repeat(std::chrono::milliseconds interval, std::function<void()> work) {
  auto timer = std::make_unique<QTimer>();
  timer->setTimerType(Qt::PreciseTimer);
  timer->setInterval(interval);
  QObject::connect(timer.get(), &QTimer::timeout, &context_, std::move(work));
  timer->start();
  QPointer<QTimer> installed = timer.release();
  installed->setParent(&context_);
  // The work itself may end the subscription: the timer then outlives this call, silenced.
  return Subscription([installed] {
    if (!installed) return;
    installed->stop();
    installed->disconnect();
    installed->deleteLater();
  });
}

}  // namespace tilora::app
