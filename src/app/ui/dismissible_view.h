// A window that a key may close.
#pragma once

#include <QQuickView>
#include <QTimer>

namespace tilora::app {

/// A window that a key closes is hidden at once, and its native window goes a second later, unless it is shown again by then. The first key
/// press in a window also makes Qt announce a window of times for it (_NET_WM_USER_TIME_WINDOW, EWMH): Metacity selects events on that one
/// when it hears of it, and ends when it is gone by then.
class DismissibleView : public QQuickView {
  Q_OBJECT

 public:
  /// The engine must outlive it.
  explicit DismissibleView(QQmlEngine& engine);

  Q_SLOT void dismiss();

 private:
  QTimer lingering_;
};

}  // namespace tilora::app
