// A window that may be closed right after a key press.
#pragma once

#include <QQuickView>
#include <QTimer>

namespace tilora::app {

/// A window that is closed is hidden at once, and its native window goes a second later, unless it is shown again by then. The first key
/// press in a window also makes Qt announce a window of times for it (_NET_WM_USER_TIME_WINDOW, EWMH): Metacity selects events on that one
/// when it hears of it, and ends when it is gone by then.
class DismissibleView : public QQuickView {
  Q_OBJECT

 public:
  /// The engine must outlive it.
  explicit DismissibleView(QQmlEngine& engine);

  Q_SLOT void dismiss();

 protected:
  bool event(QEvent* event) override;

 private:
  QTimer lingering_;
};

}  // namespace tilora::app
