#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QStringList>
#include <QUrl>

#include "foundation/tasks/SerialQueue.h"
#include "interface/destination/DestinationAdvice.h"
#include "interface/destination/LastRuns.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The destination folder that the user chooses, and the button that starts the transfer.
class DestinationModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QString path READ path WRITE setPath NOTIFY changed)
  /// A folder to begin the choice in.
  Q_PROPERTY(QUrl startFolder READ startFolder NOTIFY changed)
  Q_PROPERTY(QString status READ status NOTIFY changed)
  Q_PROPERTY(Tone tone READ tone NOTIFY changed)
  Q_PROPERTY(QStringList warnings READ warnings NOTIFY changed)
  /// True if keepNames() would spare copies of files that are there under other names.
  Q_PROPERTY(bool canKeepNames READ canKeepNames NOTIFY changed)
  Q_PROPERTY(QString effect READ effect NOTIFY changed)
  Q_PROPERTY(QString buttonText READ buttonText NOTIFY changed)
  /// The button for the folder of this phone's last run; empty if there is none to offer.
  Q_PROPERTY(QString lastText READ lastText NOTIFY changed)

 public:
  enum Tone { Quiet, Warning, Bad };
  Q_ENUM(Tone)

  DestinationModel(WindowSession& session, const Words& words);
  static DestinationModel* create(QQmlEngine* engine, QJSEngine* script);

  QString path() const;
  /// Takes a path as the user types it, "~" included. An empty one leaves the choice open.
  void setPath(const QString& path);
  QUrl startFolder() const;
  QString status() const;
  Tone tone() const { return static_cast<Tone>(advice_.tone); }
  QStringList warnings() const;
  bool canKeepNames() const { return advice_.keepingNames.has_value(); }
  QString effect() const { return QString::fromStdString(advice_.effect); }
  QString buttonText() const { return QString::fromStdString(advice_.button); }
  QString lastText() const;

  Q_INVOKABLE void choose(const QUrl& folder);
  Q_INVOKABLE void chooseLast();
  /// Sets the settings back with which the folders of the destination were named.
  Q_INVOKABLE void keepNames();
  Q_INVOKABLE void transfer() { model_.startTransfer(); }

 Q_SIGNALS:
  void changed();

 private:
  void refresh();
  void lookUpLast();

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  DestinationAdvice advice_;
  /// The phone and the destination that `last_` belongs to.
  struct Subject {
    std::string phoneHash;
    std::optional<std::string> destination;

    friend bool operator==(const Subject&, const Subject&) = default;
  };
  Subject subject_;
  LastRuns last_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  AppModel::Subscription subscription_;
  SerialQueue looking_;
};

}  // namespace tavrix::window
