// Runs the tests of the views in a program with a GUI that no display shows.
#include <gmock/gmock.h>

#include <QFont>
#include <QGuiApplication>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
  QGuiApplication::setApplicationVersion(QStringLiteral("1.2"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
