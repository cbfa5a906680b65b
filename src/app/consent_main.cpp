// The consent dialog: exit status 0 when the user chose to start, 1 when not. Its arguments are sentences that say what the session lacks;
// with any, it shows those and the answer is no.
#include <QGuiApplication>
#include <QQuickItem>

#include "app/ui/color_scheme.h"
#include "app/ui/consent_window.h"
#include "app/ui/qml_module.h"
#include "app/ui/tray_icon.h"
#include "platform/x11/connection.h"
#include "platform/x11/xsettings.h"

namespace {

constexpr int agreed = 0;
constexpr int refused = 1;

QString themeName() {
  const auto connection = tilora::x11::Connection::open();
  if (!connection) return {};
  return QString::fromStdString(tilora::x11::XSettings(*connection, [] {}).themeName());
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("tilora"));
  QGuiApplication::setWindowIcon(tilora::app::trayPicture(true));
  tilora::app::ColorScheme colors;
  colors.setThemeName(themeName());
  const auto engine = tilora::app::makeEngine();
  tilora::app::ConsentWindow window(*engine, QGuiApplication::arguments().mid(1));
  if (window.rootObject() == nullptr) return refused;
  int status = refused;
  QObject::connect(&window, &tilora::app::ConsentWindow::answered, &window, [&](bool agrees) {
    status = agrees ? agreed : refused;
    window.close();
  });
  window.show();
  window.requestActivate();
  QGuiApplication::exec();
  return status;
}
