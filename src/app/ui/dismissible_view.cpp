// Hiding now, destroying later.
#include "app/ui/dismissible_view.h"

#include <QCloseEvent>
#include <chrono>

namespace tilora::app {

DismissibleView::DismissibleView(QQmlEngine& engine) : QQuickView(&engine, nullptr) {
  lingering_.setSingleShot(true);
  lingering_.setInterval(std::chrono::seconds(1));
  connect(&lingering_, &QTimer::timeout, this, [this] {
    if (!isVisible()) destroy();
  });
}

void DismissibleView::dismiss() {
  hide();
  lingering_.start();
}

/// An accepted close that the base class sees destroys the native window, and one that is refused stops a program that quits.
bool DismissibleView::event(QEvent* event) {
  if (event->type() != QEvent::Close) return QQuickView::event(event);
  dismiss();
  event->accept();
  return true;
}

}  // namespace tilora::app
