#pragma once

#include <QtQml/qqmlregistration.h>

#include "interface/grid/GridModel.h"
#include "interface/list/FolderSelection.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The folders in the visible part of the list, and the selection.
class FolderListModel : public GridModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool isList READ isList WRITE setList NOTIFY rebuilt)
  Q_PROPERTY(int currentRow READ currentRow NOTIFY selectionChanged)
  Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)

 public:
  enum Role {
    RowRole = Qt::UserRole,
    BoxRole,
    NameRole,
    PeriodRole,
    CountsRole,
    EffectRole,
    IsInPlaceRole,
    NoteRole,
    MoreRole,
    SymbolRole,
    PicturesRole,
    IsCheckedRole,
    IsSelectedRole,
    IsCurrentRole,
    DescriptionRole,
  };

  FolderListModel(WindowSession& session, const Words& words);
  static FolderListModel* create(QQmlEngine* engine, QJSEngine* script);

  QVariant data(const QModelIndex& slot, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  using GridModel::isList;
  void setList(bool isList);
  int currentRow() const;
  int selectedCount() const { return static_cast<int>(selection_.keys.size()); }

  Q_INVOKABLE QString nameOf(int row) const;
  Q_INVOKABLE void toggle(int row);
  /// `modifiers` are Qt's: Control adds to the selection, Shift extends it.
  Q_INVOKABLE void click(int row, int modifiers);
  /// Selects a folder unless it is selected, as before its menu is opened.
  Q_INVOKABLE void point(int row);
  Q_INVOKABLE void move(tavrix::window::GridModel::Step step, bool extends);
  Q_INVOKABLE void clearSelection();

  /// Returns the selected folders, or the current one if none is selected, in the list's order.
  std::vector<Shared<DisplayGroup>> chosenFolders() const;
  /// Returns the folder of a row, or nullptr if there is none.
  const DisplayGroup* folderAt(int row) const;

 Q_SIGNALS:
  void selectionChanged();

 private:
  QVariant textOf(const DisplayGroup& folder, int row, int role) const;
  void follow(const StateChange& change);
  void takeRows(FolderRows rows);
  std::vector<QString> titles() const;
  void select(FolderSelection selection);
  /// Selects the folder to draw attention to, and moves the view there, once it is listed.
  void revealAwaited();

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  FolderRows rows_;
  FolderSelection selection_;
  std::optional<std::string> awaited_;  ///< the id of a group that is to be shown
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
