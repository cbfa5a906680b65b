// Light or dark, as the desktop prefers it, also where Qt does not know.
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QString>
#include <cstdint>
#include <memory>

namespace tilora::app {

enum class Scheme : std::uint8_t { unknown, light, dark };

/// The colours of a desktop that prefers light or dark ones, for where Qt has the others.
QPalette lightPalette();
QPalette darkPalette();

/// What the name of a theme of GTK says of it: the dark ones have the word in their name. Unknown for all others.
Scheme schemeOfTheme(const QString& name);

/// Keeps the application's palette as the desktop prefers it while it lives: what the desktop portal says (org.freedesktop.appearance,
/// color-scheme), else what the theme's name says, else what Qt has. Qt's own palette stays wherever it is of the preferred kind. Main
/// thread only.
class ColorScheme : public QObject {
  Q_OBJECT

 public:
  /// Asks the portal on `bus`, without waiting for it.
  explicit ColorScheme(QDBusConnection bus = QDBusConnection::sessionBus());
  ColorScheme(const ColorScheme&) = delete;
  ColorScheme& operator=(const ColorScheme&) = delete;
  /// Gives Qt its own palette back.
  ~ColorScheme() override;

  /// The theme of the desktop's controls; empty when nobody tells.
  void setThemeName(const QString& name);
  Scheme preferred() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The types of the portal's signal.
  Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
  void askPortal();
  void setPortalScheme(Scheme scheme);
  void apply();

  QDBusConnection bus_;
  QDBusServiceWatcher portal_;
  std::unique_ptr<QDBusPendingCallWatcher> question_;
  Scheme portalScheme_ = Scheme::unknown;
  Scheme themeScheme_ = Scheme::unknown;
  /// The kind of the palette that was set here; unknown while Qt has its own.
  Scheme applied_ = Scheme::unknown;
  bool applying_ = false;
};

}  // namespace tilora::app
