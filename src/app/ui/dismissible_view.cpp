// Hiding now, destroying later.
#include "app/ui/dismissible_view.h"

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

}  // namespace tilora::app
