#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// A setting that is on or off.
class SwitchSetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  Q_PROPERTY(bool value READ value WRITE setValue NOTIFY changed)
  /// False if the setting has no effect together with the others.
  Q_PROPERTY(bool isUsed READ isUsed NOTIFY changed)

 public:
  SwitchSetting(SettingsPort& port, std::string_view key) : port_(port), key_(key) {}

  bool value() const { return *port_.value(key_).asBool(); }
  void setValue(bool value) { port_.set(key_, value ? "true" : "false"); }
  bool isUsed() const { return port_.isUsed(key_); }

 Q_SIGNALS:
  void changed();

 private:
  SettingsPort& port_;
  std::string_view key_;
};

}  // namespace tavrix::window
