// The consent dialog: exit status 0 when the user chose to start, 1 when not. Its arguments are sentences that say what the session lacks;
// with any, it shows those and the answer is no.
#include <QGuiApplication>
#include <QQuickItem>

#include "app/ui/color_scheme.h"
#include "app/ui/consent_window.h"
#include "app/ui/qml_module.h"
#include "app/ui/tray_icon.h"
#include "platform/x11/connection.h"
#include "platform/x11/unmanaged_windows.h"
#include "platform/x11/xsettings.h"

namespace {

constexpr int agreed = 0;
constexpr int refused = 1;

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("tilora"));
  QGuiApplication::setWindowIcon(tilora::app::trayPicture(true));
  const auto connection = tilora::x11::Connection::open();
  tilora::app::ColorScheme colors;
  if (connection) colors.setThemeName(QString::fromStdString(tilora::x11::XSettings(*connection, [] {}).themeName()));
  const auto engine = tilora::app::makeEngine();
  tilora::app::ConsentWindow window(*engine, QGuiApplication::arguments().mid(1));
  if (window.rootObject() == nullptr) return refused;
  int status = refused;
  QObject::connect(&window, &tilora::app::ConsentWindow::answered, &window, [&](bool agrees) {
    status = agrees ? agreed : refused;
    window.hide();
    // To quit would destroy the windows.
    QGuiApplication::exit();
  });
  window.show();
  window.requestActivate();
  const auto shown = static_cast<xcb_window_t>(window.winId());
  QGuiApplication::exec();
  // The key that answered also made Qt announce a window of times (_NET_WM_USER_TIME_WINDOW). Metacity selects events on that one when it
  // hears of it, and ends when it is gone by then.
  if (connection) tilora::x11::awaitWithdrawal(*connection, shown);
  return status;
}
