#include "interface/platform/Notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QVariantMap>

namespace tavrix::window {

void notify(const QString& title, const QString& text) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                             QStringLiteral("/org/freedesktop/Notifications"),
                                             QStringLiteral("org.freedesktop.Notifications"),
                                             QStringLiteral("Notify"));
  constexpr unsigned int replacesNone = 0;
  constexpr int asLongAsUsual = -1;
  const QVariantMap hints{{QStringLiteral("desktop-entry"), QGuiApplication::desktopFileName()}};
  call << QStringLiteral("Tavrix") << replacesNone << QGuiApplication::desktopFileName() << title
       << text << QStringList{} << hints << asLongAsUsual;
  bus.asyncCall(call);
}

}  // namespace tavrix::window
