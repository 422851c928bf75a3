#pragma once

#include <QtQml/qqmlregistration.h>
#include <QDate>
#include <QObject>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// A setting that is a day or absent.
class DaySetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  /// "18.05.2026" in Russian, "2026-05-18" in English; empty if no day is set.
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool isSet READ isSet NOTIFY changed)
  Q_PROPERTY(int year READ year NOTIFY changed)
  /// 1 to 12.
  Q_PROPERTY(int month READ month NOTIFY changed)
  Q_PROPERTY(int day READ day NOTIFY changed)

 public:
  using Field = std::optional<CivilDate> Settings::Content::*;

  DaySetting(SettingsPort& port, Field field) : port_(port), field_(field) {}

  QString text() const;
  bool isSet() const { return value().has_value(); }
  /// Return the day, or today if none is set.
  int year() const { return shown().year(); }
  int month() const { return shown().month(); }
  int day() const { return shown().day(); }

  /// Sets the day that the user typed in either form, or none if the text is empty. Returns false
  /// if the text is not a day; nothing changes then.
  Q_INVOKABLE bool type(const QString& text);
  Q_INVOKABLE void pick(int year, int month, int day) { set(QDate{year, month, day}); }
  Q_INVOKABLE void clear() { set({}); }

 Q_SIGNALS:
  void changed();

 private:
  const std::optional<CivilDate>& value() const { return port_.now().content.*field_; }
  QDate shown() const;
  void set(QDate day);

  SettingsPort& port_;
  Field field_;
};

}  // namespace tavrix::window
