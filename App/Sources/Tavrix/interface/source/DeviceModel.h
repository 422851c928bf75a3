#pragma once

#include <QtQml/qqmlregistration.h>
#include <QList>
#include <QObject>

#include "interface/run/Pace.h"
#include "interface/source/WaitingFacts.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The state of the phone on the cable, or of the folder that is being opened, in words.
class DeviceModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY changed)
  /// Three of Step; empty if the steps are not what is missing.
  Q_PROPERTY(QList<int> steps READ steps NOTIFY changed)
  Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
  /// 0 to 1, or -1 if it is unknown.
  Q_PROPERTY(double fraction READ fraction NOTIFY changed)
  Q_PROPERTY(QString counts READ counts NOTIFY changed)
  Q_PROPERTY(QString pace READ pace NOTIFY changed)
  /// A sentence about the metadata that stays in the cache if the user stops the reading.
  Q_PROPERTY(QString note READ note NOTIFY changed)
  Q_PROPERTY(bool canStop READ canStop NOTIFY changed)
  /// The button that tries again; empty if there is none.
  Q_PROPERTY(QString retryText READ retryText NOTIFY changed)
  Q_PROPERTY(bool isFolder READ isFolder NOTIFY changed)
  Q_PROPERTY(bool isFault READ isFault NOTIFY changed)

 public:
  enum Step { Open, Now, Done };
  Q_ENUM(Step)

  DeviceModel(WindowSession& session, const Words& words);
  static DeviceModel* create(QQmlEngine* engine, QJSEngine* script);

  QString title() const { return QString::fromStdString(facts_.title); }
  QString text() const { return QString::fromStdString(facts_.text); }
  QList<int> steps() const;
  bool isBusy() const { return facts_.isBusy; }
  double fraction() const { return facts_.fraction.value_or(-1); }
  QString counts() const { return QString::fromStdString(facts_.counts); }
  QString pace() const;
  QString note() const;
  bool canStop() const { return facts_.canStop; }
  QString retryText() const { return QString::fromStdString(facts_.retry); }
  bool isFolder() const { return facts_.isFolder; }
  bool isFault() const { return facts_.isFault; }

  Q_INVOKABLE void retry();
  Q_INVOKABLE void stop();

 Q_SIGNALS:
  void changed();

 private:
  void refresh();

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  WaitingFacts facts_;
  std::optional<MetadataPass::Progress> progress_;
  Pace pace_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
