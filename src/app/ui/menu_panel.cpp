// Opening, grabbing, and closing on a click elsewhere.
#include "app/ui/menu_panel.h"

#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <algorithm>

#include "app/ui/menu_position.h"

namespace tilora::app {
namespace {

constexpr int retryInterval = 20;
constexpr int mostAttempts = 100;

}  // namespace

MenuPanel::MenuPanel(QQmlEngine& engine, MenuViewModel& menu) : QQuickView(&engine, nullptr) {
  setFlags(Qt::Popup | Qt::FramelessWindowHint);
  setTitle(QStringLiteral("Tilora"));
  setResizeMode(SizeViewToRootObject);
  setInitialProperties({{QStringLiteral("menu"), QVariant::fromValue(&menu)}});
  setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tilora/MenuView.qml")));
  retry_.setInterval(retryInterval);
  connect(&retry_, &QTimer::timeout, this, &MenuPanel::takeInput);
  connect(&menu, &MenuViewModel::chosen, this, &MenuPanel::dismiss);
  if (rootObject() == nullptr) return;
  connect(rootObject(), SIGNAL(dismissed()), this, SLOT(dismiss()));
  connect(rootObject(), &QQuickItem::implicitHeightChanged, this, &MenuPanel::fitToContent);
}

void MenuPanel::openAt(const QRect& anchor, const QRect& visible) {
  if (rootObject() == nullptr) return;
  anchor_ = anchor;
  visible_ = visible;
  fitToContent();
  // The keyboard begins at no row, wherever it was the last time.
  if (QQuickItem* last = rootObject()->scopedFocusItem()) last->setFocus(false);
  show();
  raise();
  attemptsLeft_ = mostAttempts;
  takeInput();
}

void MenuPanel::fitToContent() {
  const double height = std::min<double>(rootObject()->implicitHeight(), visible_.height());
  rootObject()->setHeight(height);
  const QSize size(static_cast<int>(rootObject()->width()), static_cast<int>(height));
  setGeometry(QRect(menuPosition(size, anchor_, visible_), size));
}

void MenuPanel::takeInput() {
  --attemptsLeft_;
  // The keyboard last: who has it can be clicked away as well.
  const bool taken = setMouseGrabEnabled(true) && setKeyboardGrabEnabled(true);
  if (taken) Q_EMIT keyboardTaken();
  if (taken || attemptsLeft_ <= 0) {
    retry_.stop();
  } else if (!retry_.isActive()) {
    retry_.start();
  }
}

void MenuPanel::dismiss() {
  if (!isVisible()) return;
  retry_.stop();
  setMouseGrabEnabled(false);
  setKeyboardGrabEnabled(false);
  hide();
  Q_EMIT dismissed();
}

bool MenuPanel::event(QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const QPoint position = static_cast<QMouseEvent*>(event)->position().toPoint();
    if (!QRect(QPoint(0, 0), size()).contains(position)) {
      dismiss();
      return true;
    }
  }
  return QQuickView::event(event);
}

}  // namespace tilora::app
