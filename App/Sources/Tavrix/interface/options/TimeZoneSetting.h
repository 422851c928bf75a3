#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QStringList>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// The time zone in which days begin and end.
class TimeZoneSetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  /// "было Europe/Moscow" and "Вернуть Europe/Moscow"; empty in the zone of the system.
  Q_PROPERTY(QString was READ was NOTIFY changed)
  Q_PROPERTY(QString resetText READ resetText NOTIFY changed)

 public:
  TimeZoneSetting(SettingsPort& port, std::string systemZone)
      : port_(port), systemZone_(std::move(systemZone)) {}

  QString text() const { return QString::fromStdString(port_.now().gathering.timeZone.id()); }
  QString was() const;
  QString resetText() const;

  /// Sets a zone by its identifier, in any letter case. Returns false if there is no such zone.
  Q_INVOKABLE bool type(const QString& text);
  Q_INVOKABLE void reset() { type(QString::fromStdString(systemZone_)); }
  /// Returns the identifiers of the zones that contain a text, the ones that begin with it first.
  Q_INVOKABLE QStringList matching(const QString& text) const;

 Q_SIGNALS:
  void changed();

 private:
  bool isInitial() const { return port_.now().gathering.timeZone.id() == systemZone_; }

  SettingsPort& port_;
  std::string systemZone_;
};

}  // namespace tavrix::window
