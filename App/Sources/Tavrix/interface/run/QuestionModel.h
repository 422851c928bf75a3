#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The question or message of the model about a run that the user wants to start.
class QuestionModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(Kind kind READ kind NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY changed)

 public:
  enum Kind {
    None,
    OptimizedCopies,
    NoDevice,
    NoDestination,
    NothingSelected,
    QuotaExhausted,
    StartFailure
  };
  Q_ENUM(Kind)

  QuestionModel(WindowSession& session, const Words& words);
  static QuestionModel* create(QQmlEngine* engine, QJSEngine* script);

  Kind kind() const;
  QString title() const;
  QString text() const;

  // The answers to the question about optimized copies.
  Q_INVOKABLE void transferEverything() { model_.transferEverything(); }
  Q_INVOKABLE void skipOptimized() { model_.skipOptimizedAndTransfer(); }
  /// Closes the question or message; nothing starts.
  Q_INVOKABLE void dismiss();

 Q_SIGNALS:
  void changed();

 private:
  QString say(const Sentence<>& sentence) const;

  AppModel& model_;
  const Words& words_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
