#pragma once

#include <QtQml/qqmlregistration.h>
#include <QList>
#include <QObject>
#include <QStringList>

#include "interface/run/Pace.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// A run under way, in words.
class ProgressModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString destination READ destination NOTIFY changed)
  Q_PROPERTY(double fraction READ fraction NOTIFY changed)
  Q_PROPERTY(QString files READ files NOTIFY changed)
  Q_PROPERTY(QString bytes READ bytes NOTIFY changed)
  /// Speed and time left; empty while they are unknown.
  Q_PROPERTY(QString speed READ speed NOTIFY changed)
  Q_PROPERTY(QString timeLeft READ timeLeft NOTIFY changed)
  /// The file that is being worked on, or what is done after the last one.
  Q_PROPERTY(QString current READ current NOTIFY changed)
  /// The titles of the four stages, how far they are, and which of them are at work.
  Q_PROPERTY(QStringList stageTitles READ stageTitles NOTIFY changed)
  Q_PROPERTY(QStringList stageTexts READ stageTexts NOTIFY changed)
  Q_PROPERTY(QList<bool> stagesAtWork READ stagesAtWork NOTIFY changed)
  /// Why the run waits; empty if it does not.
  Q_PROPERTY(QString waitText READ waitText NOTIFY changed)
  Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
  Q_PROPERTY(bool isStopping READ isStopping NOTIFY changed)
  /// A sentence about the files that stay if the run is stopped.
  Q_PROPERTY(QString stopText READ stopText NOTIFY changed)

 public:
  ProgressModel(WindowSession& session, const Words& words);
  static ProgressModel* create(QQmlEngine* engine, QJSEngine* script);

  QString title() const;
  QString destination() const;
  double fraction() const;
  QString files() const;
  QString bytes() const;
  QString speed() const;
  QString timeLeft() const;
  QString current() const;
  QStringList stageTitles() const;
  QStringList stageTexts() const;
  QList<bool> stagesAtWork() const;
  QString waitText() const;
  bool isRunning() const;
  bool isStopping() const;
  QString stopText() const;

  Q_INVOKABLE void cancel();

 Q_SIGNALS:
  void changed();

 private:
  void follow(const StateChange& change);
  void measure(const StateChange& change);
  const TransferProgressSnapshot& progress() const;

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  Pace pace_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
