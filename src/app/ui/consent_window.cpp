// A dialog of one size.
#include "app/ui/consent_window.h"

#include <QQmlEngine>
#include <QQuickItem>

namespace tilora::app {

ConsentWindow::ConsentWindow(QQmlEngine& engine, const QStringList& missing) : QQuickView(&engine, nullptr) {
  setFlags(Qt::Dialog);
  setTitle(QStringLiteral("Tilora"));
  setInitialProperties({{QStringLiteral("missing"), missing}});
  setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tilora/ConsentView.qml")));
  if (rootObject() == nullptr) return;
  setMinimumSize(size());
  setMaximumSize(size());
  // A second key may wait behind the first.
  connect(rootObject(), SIGNAL(answered(bool)), this, SIGNAL(answered(bool)), Qt::SingleShotConnection);
}

}  // namespace tilora::app
