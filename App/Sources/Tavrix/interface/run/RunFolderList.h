#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The folders of a run, in the order in which they are copied, with their own progress.
class RunFolderList : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// The row of the folder that is being copied.
  Q_PROPERTY(int current READ current NOTIFY currentChanged)

 public:
  enum Role { NameRole = Qt::UserRole, CountsRole, FractionRole, IsDoneRole };

  RunFolderList(WindowSession& session, const Words& words);
  static RunFolderList* create(QQmlEngine* engine, QJSEngine* script);

  int current() const { return current_; }
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 Q_SIGNALS:
  void currentChanged();

 private:
  void follow(const StateChange& change);
  void reset(const AppState& state);
  void showProgress(std::uint64_t filesDone);
  int rowAt(std::uint64_t filesDone) const;
  /// Returns how many files of a row are done.
  std::uint64_t doneIn(std::size_t row) const;

  AppModel& model_;
  const Words& words_;
  Shared<std::vector<TransferFolder>> folders_;
  std::vector<std::uint64_t> ends_;  ///< the number of files up to and including each folder
  std::uint64_t filesDone_ = 0;
  int current_ = 0;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
