// The panel that opens under the icon.
#pragma once

#include <QQuickView>
#include <QTimer>

#include "app/ui/menu_view_model.h"

namespace tilora::app {

/// A window that the window manager does not know of. While it is open, the keyboard and the pointer belong to it, and the active window
/// stays the active one.
class MenuPanel : public QQuickView {
  Q_OBJECT

 public:
  /// Both must outlive it.
  MenuPanel(QQmlEngine& engine, MenuViewModel& menu);

  /// Opens at an icon, inside `visible`; both in Qt's coordinates. What does not fit there is scrolled to.
  void openAt(const QRect& anchor, const QRect& visible);
  Q_SLOT void dismiss();

 Q_SIGNALS:
  void dismissed();
  /// It has grabbed the keyboard.
  void keyboardTaken();

 protected:
  bool event(QEvent* event) override;

 private:
  void takeInput();
  void fitToContent();

  /// Who holds the keyboard or the pointer at the moment, a panel whose button is still down for instance, lets go of it soon.
  QTimer retry_;
  int attemptsLeft_ = 0;
  QRect anchor_;
  QRect visible_;
};

}  // namespace tilora::app
