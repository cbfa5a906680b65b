// The palette follows the desktop's portal and its theme, while they change.
#include "app/ui/color_scheme.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QProcess>

#include "app/ui/interface_session.h"
#include "portal_stand_in.h"

namespace tilora::app {
namespace {

bool isDark() { return QGuiApplication::palette().color(QPalette::Window).lightness() < 128; }

TEST(ThemeName, SaysThatAThemeIsDark) {
  for (const char* name : {"Adwaita-dark", "Arc-Dark", "Yaru-dark", "Materia-dark-compact", "HighContrastInverse"})
    EXPECT_EQ(schemeOfTheme(QString::fromLatin1(name)), Scheme::dark) << name;
  for (const char* name : {"", "Adwaita", "Greybird", "HighContrast"})
    EXPECT_EQ(schemeOfTheme(QString::fromLatin1(name)), Scheme::unknown) << name;
}

TEST(Palettes, AreReadable) {
  for (const QPalette& palette : {lightPalette(), darkPalette()}) {
    const auto lightness = [&](QPalette::ColorRole role) { return palette.color(role).lightness(); };
    EXPECT_GT(std::abs(lightness(QPalette::WindowText) - lightness(QPalette::Window)), 150);
    EXPECT_GT(std::abs(lightness(QPalette::Text) - lightness(QPalette::Base)), 150);
    EXPECT_GT(std::abs(lightness(QPalette::ButtonText) - lightness(QPalette::Button)), 120);
  }
}

/// Qt's own palette is a light one here.
class ColorSchemeTest : public testing::Test {
 public:
  ColorSchemeTest() {
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    if (!bus.waitForStarted() || !bus.waitForReadyRead()) throw std::runtime_error("no message bus");
    const QString address = QString::fromUtf8(bus.readLine()).trimmed();
    desktopSide = QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
    programSide = QDBusConnection::connectToBus(address, QStringLiteral("program"));
  }
  ColorSchemeTest(const ColorSchemeTest&) = delete;
  ColorSchemeTest& operator=(const ColorSchemeTest&) = delete;
  ~ColorSchemeTest() override {
    for (const char* name : {"desktop", "program"}) QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    bus.terminate();
    bus.waitForFinished();
  }

 protected:
  QProcess bus;
  QDBusConnection desktopSide{QString()};
  QDBusConnection programSide{QString()};
};

TEST_F(ColorSchemeTest, ThePortalIsAskedAndFollowed) {
  PortalStandIn portal(desktopSide, PortalStandIn::dark);
  ColorScheme colors(programSide);
  ASSERT_TRUE(runUntil(isDark));
  portal.set(PortalStandIn::light);
  ASSERT_TRUE(runUntil([] { return !isDark(); }));
  portal.set(PortalStandIn::dark);
  ASSERT_TRUE(runUntil(isDark));
  portal.set(PortalStandIn::noPreference);
  ASSERT_TRUE(runUntil([] { return !isDark(); }));
}

TEST_F(ColorSchemeTest, APortalThatComesLaterIsAsked) {
  ColorScheme colors(programSide);
  turn();
  EXPECT_FALSE(isDark());
  const PortalStandIn portal(desktopSide, PortalStandIn::dark);
  EXPECT_TRUE(runUntil(isDark));
}

TEST_F(ColorSchemeTest, ThePortalKnowsBetterThanTheTheme) {
  PortalStandIn portal(desktopSide, PortalStandIn::light);
  ColorScheme colors(programSide);
  colors.setThemeName(QStringLiteral("Adwaita-dark"));
  EXPECT_TRUE(isDark());
  ASSERT_TRUE(runUntil([] { return !isDark(); }));
  portal.set(PortalStandIn::noPreference);
  EXPECT_TRUE(runUntil(isDark));
}

TEST(ColorScheme, WithoutAPortalTheThemeIsFollowed) {
  ColorScheme colors{QDBusConnection(QStringLiteral("no such connection"))};
  EXPECT_FALSE(isDark());
  colors.setThemeName(QStringLiteral("Arc-Dark"));
  EXPECT_TRUE(isDark());
  colors.setThemeName(QStringLiteral("Arc"));
  EXPECT_FALSE(isDark());
}

TEST(ColorScheme, QtHasItsOwnPaletteBackAfterwards) {
  const QPalette before = QGuiApplication::palette();
  {
    ColorScheme colors{QDBusConnection(QStringLiteral("no such connection"))};
    colors.setThemeName(QStringLiteral("Arc-Dark"));
    EXPECT_NE(QGuiApplication::palette(), before);
  }
  EXPECT_EQ(QGuiApplication::palette(), before);
}

TEST(ColorScheme, AnOpenWindowChangesItsColours) {
  InterfaceSession session;
  const QQuickItem& background = find(session.openSettings(), "background");
  const auto lightness = [&] { return background.property("color").value<QColor>().lightness(); };
  ColorScheme colors{QDBusConnection(QStringLiteral("no such connection"))};
  const int light = lightness();
  colors.setThemeName(QStringLiteral("Arc-Dark"));
  EXPECT_LT(lightness(), 60);
  colors.setThemeName({});
  EXPECT_EQ(lightness(), light);
}

}  // namespace
}  // namespace tilora::app
