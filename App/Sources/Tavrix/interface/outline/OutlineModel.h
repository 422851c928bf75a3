#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>

#include "interface/outline/OutlineRows.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class ViewChoices;
class WindowSession;
class Words;

/// The lines of the sidebar, without the ones that are collapsed.
class OutlineModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// The row of the selection, or of the row that hides it; -1 if there is none.
  Q_PROPERTY(int current READ current NOTIFY currentChanged)

 public:
  enum Role {
    TitleRole = Qt::UserRole,
    FilesRole,
    SpokenRole,
    LevelRole,    ///< 0 to 2
    IsTitleRole,  ///< it selects nothing
    CanExpandRole,
    IsExpandedRole
  };

  OutlineModel(WindowSession& session, const Words& words, ViewChoices& view);
  static OutlineModel* create(QQmlEngine* engine, QJSEngine* script);

  int current() const { return current_; }
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Selects a row; expands or collapses a title.
  Q_INVOKABLE void choose(int row);
  Q_INVOKABLE void toggle(int row);
  /// Collapses an expanded row, expands a collapsed one. Return the row to go to: the same one if
  /// it changed, else the row above the level or the first row below it.
  Q_INVOKABLE int collapse(int row);
  Q_INVOKABLE int expand(int row);

 Q_SIGNALS:
  void currentChanged();

 private:
  const OutlineRow* rowAt(int row) const;
  void setExpanded(const OutlineRow& row, bool isExpanded);
  void follow(const StateChange& change);
  void update();

  AppModel& model_;
  const Words& words_;
  ViewChoices& view_;
  OutlineFolds folds_;
  std::vector<OutlineRow> rows_;
  int current_ = -1;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
