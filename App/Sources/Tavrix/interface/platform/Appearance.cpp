#include "interface/platform/Appearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "interface/engine/EngineObjects.h"

namespace tavrix::window {
namespace {

constexpr QLatin1String service{"org.freedesktop.portal.Desktop"};
constexpr QLatin1String path{"/org/freedesktop/portal/desktop"};
constexpr QLatin1String interfaceName{"org.freedesktop.portal.Settings"};
constexpr QLatin1String area{"org.freedesktop.appearance"};
constexpr QLatin1String schemeKey{"color-scheme"};
constexpr unsigned int prefersDark = 1;

/// Returns the number in a value, which some desktops wrap twice.
unsigned int schemeIn(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt();
}

}  // namespace

Appearance::Appearance(QDBusConnection bus) {
  if (!bus.isConnected()) return;
  // A slot is not found unless its types are known by name.
  qRegisterMetaType<QDBusVariant>();
  bus.connect(service, path, interfaceName, QStringLiteral("SettingChanged"), this,
              SLOT(settingChanged(QString, QString, QDBusVariant)));
  auto call = QDBusMessage::createMethodCall(service, path, interfaceName, QStringLiteral("Read"));
  call << area << schemeKey;
  auto* const watcher = new QDBusPendingCallWatcher{bus.asyncCall(call), this};
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    const QDBusPendingReply<QVariant> reply = *watcher;
    if (!reply.isError()) setScheme(schemeIn(reply.value()));
    watcher->deleteLater();
  });
}

Appearance* Appearance::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return &EngineObjects::of<Appearance>(*engine);
}

void Appearance::setDark(std::optional<bool> isDark) {
  if (chosen_ == isDark) return;
  chosen_ = isDark;
  Q_EMIT changed();
}

void Appearance::setMotion(bool hasMotion) {
  if (hasMotion_ == hasMotion) return;
  hasMotion_ = hasMotion;
  Q_EMIT changed();
}

void Appearance::settingChanged(const QString& changedArea, const QString& key,
                                const QDBusVariant& value) {
  if (changedArea == area && key == schemeKey) setScheme(schemeIn(value.variant()));
}

void Appearance::setScheme(unsigned int scheme) {
  if (isDesktopDark_ == (scheme == prefersDark)) return;
  isDesktopDark_ = scheme == prefersDark;
  Q_EMIT changed();
}

}  // namespace tavrix::window
