#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "interface/options/SettingsPort.h"

namespace tavrix::window {

/// The text in front of every file name. The user's own text is a draft until take() is called.
class PrefixSetting : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("SettingsModel has it.")
  Q_PROPERTY(Mode mode READ mode NOTIFY changed)
  Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY changed)
  /// True if the draft differs from the prefix in use.
  Q_PROPERTY(bool isDraftNew READ isDraftNew NOTIFY changed)
  /// The name of the first photo with the prefix, or with the draft while it is edited.
  Q_PROPERTY(QString example READ example NOTIFY changed)

 public:
  enum Mode { None, Phone, Custom };
  Q_ENUM(Mode)

  /// The prefix of the phone's name is shown as `phoneName`.
  PrefixSetting(SettingsPort& port, std::string phoneName)
      : port_(port), phoneName_(std::move(phoneName)) {}

  Mode mode() const;
  QString draft() const;
  void setDraft(const QString& draft);
  bool isDraftNew() const;
  QString example() const;

  /// Chooses a mode. A prefix of the user's own is used once it has been taken.
  Q_INVOKABLE void pick(int mode);
  /// Uses the draft from now on; an empty one means no prefix.
  Q_INVOKABLE void take();

 Q_SIGNALS:
  void changed();

 private:
  std::string phoneName() const;

  SettingsPort& port_;
  std::string phoneName_;
  std::optional<std::string> draft_;  ///< set while it is edited
};

}  // namespace tavrix::window
