#pragma once

#include <QtQml/qqmlregistration.h>
#include <QRectF>

#include "interface/list/FolderHeaders.h"
#include "interface/list/FolderSelection.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The folders in the visible part of the list, the places of all of them, and the selection. The
/// view tells it what part it shows, and follows `positioned`. A row is the index of a folder in
/// the list.
class FolderListModel : public SlotModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(int count READ count NOTIFY rebuilt)
  Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY rebuilt)
  Q_PROPERTY(bool isList READ isList WRITE setList NOTIFY rebuilt)
  Q_PROPERTY(bool hasHeaders READ hasHeaders NOTIFY rebuilt)
  Q_PROPERTY(QAbstractItemModel* headers READ headers CONSTANT)
  /// The title of the section at the top of the view, and how far the next one has pushed it up.
  Q_PROPERTY(QString topTitle READ topTitle NOTIFY scrolled)
  Q_PROPERTY(qreal topShift READ topShift NOTIFY scrolled)
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
    StripRole,
    IsCheckedRole,
    IsSelectedRole,
    IsCurrentRole,
    DescriptionRole,
  };
  enum Step { Left, Right, Up, Down, First, Last, PageUp, PageDown };
  Q_ENUM(Step)

  FolderListModel(WindowSession& session, const Words& words);
  static FolderListModel* create(QQmlEngine* engine, QJSEngine* script);

  QVariant data(const QModelIndex& slot, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  int count() const { return static_cast<int>(rows_.folders.size()); }
  qreal contentHeight() const { return layout_.height(); }
  bool isList() const { return isList_; }
  void setList(bool isList);
  bool hasHeaders() const { return rows_.hasHeaders; }
  QAbstractItemModel* headers() { return &headers_; }
  QString topTitle() const;
  qreal topShift() const;
  int currentRow() const;
  int selectedCount() const { return static_cast<int>(selection_.keys.size()); }

  /// The view shows the part of the list from `top` on.
  Q_INVOKABLE void setViewport(qreal top, qreal width, qreal height);
  Q_INVOKABLE QRectF boxOf(int row) const;
  Q_INVOKABLE QString nameOf(int row) const;
  Q_INVOKABLE void toggle(int row);
  /// `modifiers` are Qt's: Control adds to the selection, Shift extends it.
  Q_INVOKABLE void click(int row, int modifiers);
  /// Selects a folder unless it is selected, as before its menu is opened.
  Q_INVOKABLE void point(int row);
  Q_INVOKABLE void move(tavrix::window::FolderListModel::Step step, bool extends);
  Q_INVOKABLE void clearSelection();

  /// Returns the selected folders, or the current one if none is selected, in the list's order.
  std::vector<Shared<DisplayGroup>> chosenFolders() const;
  /// Returns the folder of a row, or nullptr if there is none.
  const DisplayGroup* folderAt(int row) const;

 Q_SIGNALS:
  void rebuilt();
  void scrolled();
  void selectionChanged();
  /// The view must show the list from this offset on.
  void positioned(qreal top);

 private:
  QVariant textOf(const DisplayGroup& folder, int row, int role) const;
  void follow(const StateChange& change);
  void takeRows(FolderRows rows);
  void layOut();
  /// Returns the nearest offset that the view can have.
  double clamped(double top) const;
  void showViewport();
  void select(FolderSelection selection);
  void moveIntoView(std::size_t row);
  /// Selects the folder to draw attention to, and moves the view there, once it is listed.
  void revealAwaited();

  AppModel& model_;
  const Words& words_;
  FolderRows rows_;
  FolderLayout layout_;
  FolderHeaders headers_;
  FolderSelection selection_;
  std::optional<std::string> awaited_;  ///< the id of a group that is to be shown
  bool isList_ = false;
  double top_ = 0;
  double width_ = 0;
  double viewHeight_ = 0;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
