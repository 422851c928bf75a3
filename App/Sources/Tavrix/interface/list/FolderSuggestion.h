#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The first of the merges that the model suggests, as a question.
class FolderSuggestion : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// Empty if nothing is suggested.
  Q_PROPERTY(QString text READ text NOTIFY changed)

 public:
  FolderSuggestion(WindowSession& session, const Words& words);
  static FolderSuggestion* create(QQmlEngine* engine, QJSEngine* script);

  QString text() const { return text_; }
  /// Merges the folders.
  Q_INVOKABLE void accept();
  /// Stops suggesting this merge.
  Q_INVOKABLE void reject();

 Q_SIGNALS:
  void changed();

 private:
  const MergeSuggestion* first() const;
  void update();

  AppModel& model_;
  const Words& words_;
  QString text_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
