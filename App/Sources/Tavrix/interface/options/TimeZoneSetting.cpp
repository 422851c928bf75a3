#include "interface/options/TimeZoneSetting.h"

#include <QTimeZone>
#include <algorithm>

namespace tavrix::window {
namespace {

const QStringList& allZones() {
  static const QStringList zones = [] {
    QStringList list;
    for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) {
      if (id.contains('/') || id == "UTC") list.append(QString::fromLatin1(id));
    }
    return list;
  }();
  return zones;
}

}  // namespace

QString TimeZoneSetting::was() const {
  if (isInitial()) return {};
  return QString::fromStdString(say(port_.language(), sentences::wasValue, systemZone_));
}

QString TimeZoneSetting::resetText() const {
  if (isInitial()) return {};
  return QString::fromStdString(say(port_.language(), sentences::resetValue, systemZone_));
}

bool TimeZoneSetting::type(const QString& text) {
  const QString typed = text.trimmed().replace(QLatin1Char{' '}, QLatin1Char{'_'});
  const auto& zones = allZones();
  const auto found = std::find_if(zones.begin(), zones.end(), [&](const QString& zone) {
    return zone.compare(typed, Qt::CaseInsensitive) == 0;
  });
  const auto zone = TimeZone::load((found == zones.end() ? typed : *found).toStdString());
  if (zone) port_.change([&](Settings& settings) { settings.gathering.timeZone = *zone; });
  Q_EMIT changed();
  return zone.has_value();
}

QStringList TimeZoneSetting::matching(const QString& text) const {
  const QString wanted = text.trimmed().replace(QLatin1Char{' '}, QLatin1Char{'_'});
  QStringList found;
  for (const QString& zone : allZones()) {
    if (zone.contains(wanted, Qt::CaseInsensitive)) found.append(zone);
  }
  const auto begins = [&](const QString& zone) {
    return zone.section(QLatin1Char{'/'}, -1).startsWith(wanted, Qt::CaseInsensitive);
  };
  std::stable_partition(found.begin(), found.end(), begins);
  return found;
}

}  // namespace tavrix::window
