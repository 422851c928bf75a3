#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// A setting that is a number with a unit. A slider covers the usual values; any value that the key
/// accepts can be typed.
class NumberSetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  /// In the unit that is shown; a fraction is shown in per cent.
  Q_PROPERTY(double value READ value WRITE setValue NOTIFY changed)
  /// The ends of the slider, and the distance of its stops.
  Q_PROPERTY(double from READ from CONSTANT)
  Q_PROPERTY(double to READ to CONSTANT)
  Q_PROPERTY(double step READ step CONSTANT)
  /// The number alone: "4,5".
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(QString unit READ unit NOTIFY changed)
  /// The number with its unit: "4,5 ч".
  Q_PROPERTY(QString fullText READ fullText NOTIFY changed)
  /// "было 4 ч" and "Вернуть 4 ч"; empty if the setting has its initial value.
  Q_PROPERTY(QString was READ was NOTIFY changed)
  Q_PROPERTY(QString resetText READ resetText NOTIFY changed)
  /// False if the setting has no effect together with the others.
  Q_PROPERTY(bool isUsed READ isUsed NOTIFY changed)

 public:
  enum class Unit { hours, kilometres, percent, days };
  struct Shape {
    Unit unit = Unit::hours;
    double from = 0;
    double to = 0;
    double step = 1;
  };

  NumberSetting(SettingsPort& port, std::string_view key, Shape shape)
      : port_(port), key_(key), shape_(shape) {}

  double value() const;
  /// Sets the nearest value that the key accepts.
  void setValue(double value);
  double from() const { return shape_.from; }
  double to() const { return shape_.to; }
  double step() const { return shape_.step; }
  QString text() const;
  QString unit() const;
  QString fullText() const;
  QString was() const;
  QString resetText() const;
  bool isUsed() const { return port_.isUsed(key_); }

  /// Sets the number at the beginning of a text that the user typed, with a comma or a full stop. A
  /// text without a number changes nothing.
  Q_INVOKABLE void type(const QString& text);
  /// Moves by steps of the slider.
  Q_INVOKABLE void move(int steps) { setValue(value() + steps * shape_.step); }
  Q_INVOKABLE void reset() { setValue(initialValue()); }

 Q_SIGNALS:
  void changed();

 private:
  double initialValue() const;
  QString fullTextOf(double value) const;

  SettingsPort& port_;
  std::string_view key_;
  Shape shape_;
};

}  // namespace tavrix::window
