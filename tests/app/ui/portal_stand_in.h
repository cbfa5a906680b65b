// A desktop portal that only knows the preferred colours.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <utility>

namespace tilora::app {

/// On the bus while it lives, under the portal's name.
class PortalStandIn : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  enum Preference : unsigned { noPreference, dark, light };

  PortalStandIn(QDBusConnection bus, Preference preference) : bus_(std::move(bus)), preference_(preference) {
    bus_.registerObject(path(), this, QDBusConnection::ExportAllSlots);
    bus_.registerService(service());
  }
  PortalStandIn(const PortalStandIn&) = delete;
  PortalStandIn& operator=(const PortalStandIn&) = delete;
  ~PortalStandIn() override {
    bus_.unregisterService(service());
    bus_.unregisterObject(path());
  }

  void set(Preference preference) {
    preference_ = preference;
    QDBusMessage signal =
        QDBusMessage::createSignal(path(), QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
    signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme") << QVariant::fromValue(wrapped());
    bus_.send(signal);
    // An answered question after it: the bus has the signal.
    bus_.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                             QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
  }

  /// The portal wraps the answer once more than the signal does.
  // NOLINTNEXTLINE(readability-identifier-naming): the portal's name.
  Q_SLOT QDBusVariant Read(const QString& group, const QString& key) {
    const bool known = group == QLatin1String("org.freedesktop.appearance") && key == QLatin1String("color-scheme");
    return QDBusVariant(known ? QVariant::fromValue(wrapped()) : QVariant());
  }

 private:
  static QString service() { return QStringLiteral("org.freedesktop.portal.Desktop"); }
  static QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
  QDBusVariant wrapped() const { return QDBusVariant(static_cast<unsigned>(preference_)); }

  QDBusConnection bus_;
  Preference preference_;
};

}  // namespace tilora::app
