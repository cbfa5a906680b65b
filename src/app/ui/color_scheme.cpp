// The two palettes, and who says which.
#include "app/ui/color_scheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEvent>
#include <QGuiApplication>
#include <utility>

namespace tilora::app {
namespace {

constexpr const char* portalService = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearanceGroup = "org.freedesktop.appearance";
constexpr const char* schemeKey = "color-scheme";

struct Colors {
  QRgb window, base, button, text, disabledText, accent, link;
};

constexpr Colors lightColors = {0xFFEFEFF1, 0xFFFFFFFF, 0xFFFBFBFC, 0xFF1D1D1F, 0xFF8A8A8E, 0xFF2476D2, 0xFF1B5FAE};
constexpr Colors darkColors = {0xFF2A2A2D, 0xFF1C1C1E, 0xFF46464A, 0xFFF2F2F4, 0xFF8A8A8E, 0xFF3D8BE8, 0xFF6CB1FF};

QPalette paletteOf(const Colors& colors) {
  const QColor window(colors.window);
  const QColor base(colors.base);
  const QColor button(colors.button);
  const QColor text(colors.text);
  QPalette palette(text, button, button.lighter(), base.darker(), button.darker(), text, Qt::white, base, window);
  palette.setColor(QPalette::Highlight, QColor(colors.accent));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(colors.link));
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(colors.disabledText));
  }
  return palette;
}

Scheme schemeOf(const QPalette& palette) {
  const bool isDark = palette.color(QPalette::Active, QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
  return isDark ? Scheme::dark : Scheme::light;
}

/// The portal's numbers: 1 dark, 2 light, all others no preference.
Scheme schemeOf(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  constexpr std::uint32_t dark = 1;
  constexpr std::uint32_t light = 2;
  if (value == QVariant(dark)) return Scheme::dark;
  return value == QVariant(light) ? Scheme::light : Scheme::unknown;
}

}  // namespace

QPalette lightPalette() { return paletteOf(lightColors); }
QPalette darkPalette() { return paletteOf(darkColors); }

Scheme schemeOfTheme(const QString& name) {
  const auto says = [&name](const char* word) { return name.contains(QLatin1String(word), Qt::CaseInsensitive); };
  return says("dark") || says("inverse") ? Scheme::dark : Scheme::unknown;
}

ColorScheme::ColorScheme(QDBusConnection bus)
    : bus_(std::move(bus)), portal_(QString::fromLatin1(portalService), bus_, QDBusServiceWatcher::WatchForRegistration) {
  QCoreApplication::instance()->installEventFilter(this);
  if (!bus_.isConnected()) return;
  // A slot is only found once its types are known.
  qRegisterMetaType<QDBusVariant>();
  bus_.connect(QString::fromLatin1(portalService), QString::fromLatin1(portalPath), QString::fromLatin1(portalInterface),
               QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QString, QString, QDBusVariant)));
  connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, [this] { askPortal(); });
  askPortal();
}

ColorScheme::~ColorScheme() {
  applying_ = true;
  if (applied_ != Scheme::unknown) QGuiApplication::setPalette(QPalette());
}

void ColorScheme::setThemeName(const QString& name) {
  themeScheme_ = schemeOfTheme(name);
  apply();
}

Scheme ColorScheme::preferred() const { return portalScheme_ == Scheme::unknown ? themeScheme_ : portalScheme_; }

bool ColorScheme::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) apply();
  return QObject::eventFilter(watched, event);
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
  if (group == QLatin1String(appearanceGroup) && key == QLatin1String(schemeKey)) setPortalScheme(schemeOf(value.variant()));
}

void ColorScheme::askPortal() {
  QDBusMessage question = QDBusMessage::createMethodCall(QString::fromLatin1(portalService), QString::fromLatin1(portalPath),
                                                         QString::fromLatin1(portalInterface), QStringLiteral("Read"));
  question << QString::fromLatin1(appearanceGroup) << QString::fromLatin1(schemeKey);
  question_ = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(question));
  connect(question_.get(), &QDBusPendingCallWatcher::finished, this, [this](const QDBusPendingCallWatcher* call) {
    const QDBusMessage answer = call->reply();
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) setPortalScheme(schemeOf(answer.arguments().first()));
  });
}

void ColorScheme::setPortalScheme(Scheme scheme) {
  portalScheme_ = scheme;
  apply();
}

void ColorScheme::apply() {
  if (applying_ || preferred() == applied_) return;
  applying_ = true;
  if (std::exchange(applied_, Scheme::unknown) != Scheme::unknown) QGuiApplication::setPalette(QPalette());
  const Scheme wanted = preferred();
  if (wanted != Scheme::unknown && schemeOf(QGuiApplication::palette()) != wanted) {
    applied_ = wanted;
    QGuiApplication::setPalette(wanted == Scheme::dark ? darkPalette() : lightPalette());
  }
  applying_ = false;
}

}  // namespace tilora::app
