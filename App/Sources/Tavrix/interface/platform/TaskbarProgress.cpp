#include "interface/platform/TaskbarProgress.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QVariantMap>

namespace tavrix::window {

void showInTaskbar(std::optional<double> fraction) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto signal = QDBusMessage::createSignal(QStringLiteral("/com/tavrix/window"),
                                           QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                           QStringLiteral("Update"));
  const QVariantMap values{{QStringLiteral("progress"), fraction.value_or(0)},
                           {QStringLiteral("progress-visible"), fraction.has_value()}};
  signal << QStringLiteral("application://%1.desktop").arg(QGuiApplication::desktopFileName())
         << values;
  bus.send(signal);
}

}  // namespace tavrix::window
