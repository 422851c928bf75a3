#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QStringList>
#include <optional>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class FolderListModel;
class WindowSession;
class Words;

/// The actions on the selected folders, or on the current one if none is selected.
class FolderActions : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool canMerge READ canMerge NOTIFY changed)
  Q_PROPERTY(bool canTakeApart READ canTakeApart NOTIFY changed)
  /// True after a merge, until the division into folders changes.
  Q_PROPERTY(bool canUndoMerge READ canUndoMerge NOTIFY changed)
  /// True if all of the folders are checked.
  Q_PROPERTY(bool areChecked READ areChecked NOTIFY changed)
  /// True if there is one folder, so that boundary() explains it.
  Q_PROPERTY(bool hasBoundary READ hasBoundary NOTIFY changed)
  Q_PROPERTY(bool hasFolders READ hasFolders NOTIFY changed)

 public:
  FolderActions(WindowSession& session, FolderListModel& list, const Words& words);
  static FolderActions* create(QQmlEngine* engine, QJSEngine* script);

  bool canMerge() const;
  bool canTakeApart() const;
  bool canUndoMerge() const { return lastMerge_.has_value(); }
  bool areChecked() const;
  bool hasFolders() const;
  bool hasBoundary() const;

  /// Checks all of them, or unchecks them if all are checked.
  Q_INVOKABLE void toggleChecks();
  Q_INVOKABLE void merge();
  Q_INVOKABLE void takeApart();
  Q_INVOKABLE void undoMerge();
  /// Does not undo, but no longer offers it.
  Q_INVOKABLE void keepMerge();
  /// Gives a folder a name of the user's own; an empty one restores the name by the template.
  Q_INVOKABLE void rename(int row, const QString& name);
  Q_INVOKABLE void copyNames() const;
  /// Returns the paragraphs that explain why the folder begins and ends where it does; none unless
  /// it is the only one.
  Q_INVOKABLE QStringList boundary() const;

 Q_SIGNALS:
  void changed();

 private:
  void follow(const StateChange& change);

  AppModel& model_;
  FolderListModel& list_;
  const Words& words_;
  std::optional<std::string> lastMerge_;  ///< the id of the group
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
