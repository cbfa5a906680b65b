// Reading the palette.
#include "app/ui/theme.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace tilora::app {
namespace {

constexpr double secondaryShare = 0.68;
constexpr double separatorShare = 0.5;
constexpr int middleLightness = 128;
constexpr int linkContrast = 135;

QColor role(QPalette::ColorRole role) { return QGuiApplication::palette().color(QPalette::Active, role); }

QColor blended(const QColor& over, const QColor& under, double share) {
  const auto mix = [share](float upper, float lower) { return static_cast<float>(upper * share + lower * (1 - share)); };
  return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()), mix(over.blueF(), under.blueF()));
}

/// The relative luminance of the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color) {
  const auto linear = [](double channel) { return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

Theme::Theme(QObject* parent) : QObject(parent) { QCoreApplication::instance()->installEventFilter(this); }

bool Theme::isDark() const { return windowBackground().lightness() < middleLightness; }
QColor Theme::windowBackground() const { return role(QPalette::Window); }
QColor Theme::controlBackground() const { return role(QPalette::Base); }
QColor Theme::control() const { return role(QPalette::Button); }
QColor Theme::text() const { return role(QPalette::WindowText); }
QColor Theme::separator() const { return blended(text(), windowBackground(), separatorShare); }
QColor Theme::secondaryText() const { return blended(text(), windowBackground(), secondaryShare); }
QColor Theme::accent() const { return role(QPalette::Highlight); }
// The accent, at a brightness at which a line of text is read well.
QColor Theme::link() const { return isDark() ? accent().lighter(linkContrast) : accent().darker(linkContrast); }
QColor Theme::orange() const { return isDark() ? QColor(0xFF, 0x9F, 0x0A) : QColor(0xDE, 0x6C, 0x00); }
QColor Theme::orangeText() const { return isDark() ? QColor(0xFF, 0x9F, 0x0A) : QColor(0xB0, 0x55, 0x00); }
QColor Theme::redText() const { return isDark() ? QColor(0xFF, 0x6B, 0x61) : QColor(0xC8, 0x10, 0x20); }
QString Theme::monospacedFamily() const { return QFontDatabase::systemFont(QFontDatabase::FixedFont).family(); }

QString Theme::roundedFamily() const {
  const QString family = QGuiApplication::font().family();
  const QString rounded = family + QStringLiteral(" Rounded");
  return QFontDatabase::hasFamily(rounded) ? rounded : family;
}

QColor Theme::faded(const QColor& color, double share) const {
  QColor result = color;
  result.setAlphaF(static_cast<float>(std::clamp(color.alphaF() * share, 0.0, 1.0)));
  return result;
}

QColor Theme::textOn(const QColor& background) const {
  // White stays the choice on colours of middle brightness, where it still has a contrast of 3 to 1.
  constexpr double turningPoint = 0.3;
  return luminance(background) > turningPoint ? QColor(Qt::black) : QColor(Qt::white);
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) Q_EMIT changed();
  return QObject::eventFilter(watched, event);
}

}  // namespace tilora::app
