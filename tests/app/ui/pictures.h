// Taking pictures of the windows and comparing them with those that were looked at and found right.
#pragma once

#include <gmock/gmock.h>

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>

#include "app/ui/color_scheme.h"
#include "app/ui/interface_session.h"
#include "picture_difference.h"

namespace tilora::app {

inline bool isDark() { return qEnvironmentVariable("TILORA_SCHEME") == QLatin1String("dark"); }

/// The end of the name of a picture that is drawn in this run.
inline QString variant() {
  const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1"));
  return QStringLiteral("-%1-%2x.png").arg(isDark() ? QStringLiteral("dark") : QStringLiteral("light"), scale);
}

/// The window once it stands still.
inline QImage pictureOf(QQuickWindow& window) {
  // One frame for the layout, one to be seen.
  for (int frame = 0; frame < 2; ++frame) window.grabWindow();
  return window.grabWindow().convertToFormat(QImage::Format_RGB32);
}

/// Compares with the picture in that file, or writes it.
inline void expectLikePicture(const QImage& actual, const QString& file) {
  // Less than one shortcut that is another one changes.
  constexpr double mostDifferent = 0.0015;
  const QString expected = QDir(QStringLiteral(TILORA_PICTURES)).filePath(file);
  if (qEnvironmentVariableIsSet("TILORA_WRITE_PICTURES")) {
    ASSERT_TRUE(actual.save(expected, "PNG", 0)) << expected.toStdString();
    return;
  }
  const double difference = visibleDifference(actual, QImage(expected));
  EXPECT_LT(difference, mostDifferent) << file.toStdString();
  if (difference >= mostDifferent) actual.save(QDir(QStringLiteral(TILORA_ACTUAL_PICTURES)).filePath(file));
}

inline int runPictureTests(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
  QGuiApplication::setApplicationVersion(QStringLiteral("1.0"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setPalette(isDark() ? darkPalette() : lightPalette());
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}

}  // namespace tilora::app
