#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The lines under the search field.
class SearchSuggestions : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(int count READ rowCountNow NOTIFY countChanged)

 public:
  enum Role { TitleRole = Qt::UserRole, SymbolRole, FilesRole };

  SearchSuggestions(WindowSession& session, const Words& words);
  static SearchSuggestions* create(QQmlEngine* engine, QJSEngine* script);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Searches for a suggestion.
  Q_INVOKABLE void choose(int row);

 Q_SIGNALS:
  void countChanged();

 private:
  int rowCountNow() const { return rowCount(); }

  AppModel& model_;
  const Words& words_;
  Shared<std::vector<SearchSuggestion>> suggestions_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
