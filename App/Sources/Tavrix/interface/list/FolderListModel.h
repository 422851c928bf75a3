#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The folders that the window lists.
class FolderListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { NameRole = Qt::UserRole, PeriodRole, CountsRole, NewFilesRole, CheckedRole };

  FolderListModel(WindowSession& session, const Words& words);
  static FolderListModel* create(QQmlEngine* engine, QJSEngine* script);

  int count() const { return static_cast<int>(groups_->size()); }
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  Q_INVOKABLE void toggle(int row);

 Q_SIGNALS:
  void countChanged();

 private:
  void follow(const StateChange& change);

  AppModel& model_;
  const Words& words_;
  DisplayGroups groups_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
