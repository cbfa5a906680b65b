// Pictures of the windows as they are drawn. Usage: ui_pictures OUTPUT_FOLDER NAME_SUFFIX [--dark]
#include <QFont>
#include <QGuiApplication>
#include <cstdio>

#include "app/ui/color_scheme.h"
#include "app/ui/interface_session.h"

namespace {

bool save(QQuickWindow& window, const QString& file) {
  // One frame for the layout, one to be seen.
  for (int frame = 0; frame < 2; ++frame) window.grabWindow();
  const bool saved = window.grabWindow().save(file);
  std::printf("%s%s\n", saved ? "" : "cannot write ", qPrintable(file));
  return saved;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() < 3) return 2;
  QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
  QGuiApplication::setApplicationVersion(QStringLiteral("0.1.0"));
  if (arguments.contains(QStringLiteral("--dark"))) QGuiApplication::setPalette(tilora::app::darkPalette());
  tilora::app::InterfaceSession session;
  session.controller().setWindowPadding(12);
  const auto file = [&](const char* window) { return arguments.at(1) + QLatin1Char('/') + QLatin1String(window) + arguments.at(2); };
  session.openMenu();
  bool saved = save(*session.interface().menuPanel(), file("menu-untrusted"));
  session.engine().advance(std::chrono::milliseconds(250));
  tilora::app::turn();
  saved &= save(*session.interface().menuPanel(), file("menu"));
  QQuickItem& settings = session.openSettings();
  saved &= save(*session.interface().settingsWindow(), file("settings"));
  session.desktop().loginItem().traits.registerError = "The disk is full.";
  tilora::app::InterfaceSession::click(tilora::app::find(settings, "loginSwitch"));
  tilora::app::InterfaceSession::click(tilora::app::find(tilora::app::find(settings, "shortcut0"), "record"));
  tilora::app::InterfaceSession::tap(*session.interface().settingsWindow(), Qt::Key_K);
  tilora::app::InterfaceSession::click(tilora::app::find(tilora::app::find(settings, "shortcut1"), "record"));
  saved &= save(*session.interface().settingsWindow(), file("settings-errors"));
  return saved ? 0 : 1;
}
