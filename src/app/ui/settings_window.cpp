// Its size, its keys and its end.
#include "app/ui/settings_window.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <utility>

namespace tilora::app {

SettingsWindow::SettingsWindow(QQmlEngine& engine, SettingsViewModel& settings, MenuViewModel& menu, KeyFilter filter)
    : DismissibleView(engine), settings_(settings), filter_(std::move(filter)) {
  setTitle(QStringLiteral("Tilora Settings"));
  setInitialProperties({{QStringLiteral("settings"), QVariant::fromValue(&settings)},
                        {QStringLiteral("menu"), QVariant::fromValue(&menu)},
                        {QStringLiteral("offersMenu"), false}});
  setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tilora/SettingsView.qml")));
  if (rootObject() == nullptr) return;
  setMinimumSize(size());
  setMaximumSize(size());
  connect(rootObject(), SIGNAL(dismissed()), this, SLOT(dismiss()));
}

void SettingsWindow::setOffersMenu(bool offersMenu) {
  if (rootObject() != nullptr) rootObject()->setProperty("offersMenu", offersMenu);
}

bool SettingsWindow::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      if (filter_(*static_cast<QKeyEvent*>(event))) return true;
      break;
    case QEvent::Hide:
      settings_.disappear();
      Q_EMIT closed();
      break;
    default:
      break;
  }
  return DismissibleView::event(event);
}

}  // namespace tilora::app
