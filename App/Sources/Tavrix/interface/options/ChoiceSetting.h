#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QStringList>
#include <functional>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// A setting that is one of a few choices.
class ChoiceSetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  Q_PROPERTY(QStringList titles READ titles NOTIFY changed)
  /// A second line for each choice; empty if the choices have none.
  Q_PROPERTY(QStringList details READ details NOTIFY changed)
  /// -1 if there is no choice.
  Q_PROPERTY(int current READ current NOTIFY changed)
  Q_PROPERTY(QString currentTitle READ currentTitle NOTIFY changed)
  /// False if the setting has no effect together with the others.
  Q_PROPERTY(bool isUsed READ isUsed NOTIFY changed)

 public:
  /// A choice, as it is shown, and the change of the settings that it makes.
  struct Choice {
    std::string title;
    std::string detail{};
    bool isCurrent = false;
    std::function<void(Settings&)> take{};
  };
  using Choices = std::function<std::vector<Choice>(const SettingsPort&)>;

  ChoiceSetting(SettingsPort& port, std::string_view key, Choices choices)
      : port_(port), key_(key), choices_(std::move(choices)) {}

  QStringList titles() const;
  QStringList details() const;
  int current() const;
  QString currentTitle() const;
  bool isUsed() const { return port_.isUsed(key_); }

  Q_INVOKABLE void pick(int index);

 Q_SIGNALS:
  void changed();

 private:
  SettingsPort& port_;
  std::string_view key_;
  Choices choices_;
};

/// Return the choices of a setting in their order.
std::vector<ChoiceSetting::Choice> editedPolicyChoices(const SettingsPort& port);
std::vector<ChoiceSetting::Choice> packingChoices(const SettingsPort& port);
std::vector<ChoiceSetting::Choice> homeMonthsChoices(const SettingsPort& port);

}  // namespace tavrix::window
