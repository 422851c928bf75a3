#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QUrl>

#include "foundation/tasks/SerialQueue.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The sources that the user can turn to: the phones on the cable as rows, and folders.
class SourceMenuModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { NameRole = Qt::UserRole, StateRole, IsCurrentRole };

  SourceMenuModel(WindowSession& session, const Words& words);
  static SourceMenuModel* create(QQmlEngine* engine, QJSEngine* script);

  int count() const { return static_cast<int>(phones_.size()); }
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Turns to the phone of a row.
  Q_INVOKABLE void openPhone(int row);
  /// Turns to any phone on the cable.
  Q_INVOKABLE void openAnyPhone();
  Q_INVOKABLE void openFolder(const QUrl& folder);
  /// Turns to a folder that was dropped on the window, if it is a source; otherwise emits
  /// destinationOffered().
  Q_INVOKABLE void drop(const QUrl& folder);

 Q_SIGNALS:
  void countChanged();
  void destinationOffered(const QUrl& folder, const QString& text);

 private:
  void refresh();
  void offer(const QUrl& folder);

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  std::vector<PhoneOnCable> phones_;
  std::string currentID_;  ///< of the phone that the window shows
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  AppModel::Subscription subscription_;
  SerialQueue looking_;
};

}  // namespace tavrix::window
