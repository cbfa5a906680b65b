// Drawing the icon, and putting it up again for a panel of the other protocol.
#include "app/ui/tray_icon.h"

#include <QCursor>
#include <QDBusConnection>
#include <QPainter>
#include <QPixmap>
#include <array>
#include <utility>

#include "app/ui/symbols.h"

namespace tilora::app {
namespace {

constexpr const char* statusNotifierWatcher = "org.kde.StatusNotifierWatcher";
constexpr std::array sizes = {16, 22, 24, 32, 44, 48, 64};

/// A light symbol with a dark rim: nobody tells an icon what colour its panel has.
QPixmap drawn(const QString& symbol, int side) {
  constexpr double rim = 1.0 / 16;
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const double margin = side * rim;
  painter.translate(margin, margin);
  const QPainterPath shape = symbolPath(symbol, side - 2 * margin, 1);
  painter.strokePath(shape, QPen(QColor(0, 0, 0, 150), 2 * margin, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.fillPath(shape, QColor(0xF5, 0xF5, 0xF7));
  return picture;
}

}  // namespace

QIcon trayPicture(bool trusted) {
  const QString symbol = trusted ? QStringLiteral("rectangle.stack.fill") : QStringLiteral("exclamationmark.triangle.fill");
  QIcon icon;
  for (const int side : sizes) icon.addPixmap(drawn(symbol, side));
  return icon;
}

TrayIcon::TrayIcon(Clicks clicks)
    : clicks_(std::move(clicks)),
      watcher_(QString::fromLatin1(statusNotifierWatcher), QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  // Which protocol an icon speaks is settled when it is made.
  QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, &watcher_, [this] { install(); });
  install();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::install() {
  icon_ = std::make_unique<QSystemTrayIcon>(trayPicture(trusted_));
  icon_->setToolTip(QStringLiteral("Tilora"));
  QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(), [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::MiddleClick) return clicks_.openAccess();
    const QRect place = icon_->geometry();
    clicks_.openMenu(place.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : place);
  });
  icon_->show();
}

void TrayIcon::setTrusted(bool trusted) {
  if (std::exchange(trusted_, trusted) != trusted) icon_->setIcon(trayPicture(trusted));
}

}  // namespace tilora::app
