#pragma once

#include <QAbstractListModel>
#include <functional>
#include <vector>

#include "interface/grid/FolderLayout.h"

namespace tavrix::window {

/// A list model for the visible part of a long list. Its rows are slots, each of which shows one
/// entry of the list or none, so that a view with one item for each slot reuses its items. While
/// the user scrolls, only slots that get another entry change.
class SlotModel : public QAbstractListModel {
  Q_OBJECT

 public:
  int rowCount(const QModelIndex& parent = {}) const override;

 protected:
  static constexpr int none = -1;

  /// Returns the entry in a slot, or `none`.
  int entryAt(const QModelIndex& slot) const;
  /// Shows these entries, and no others.
  void show(FolderLayout::Range entries);
  /// Reports a change of the shown entries for which `isStale` returns true.
  void refresh(const std::function<bool(int)>& isStale);
  void refreshAll();

 private:
  std::vector<int> entries_;  ///< by slot
};

}  // namespace tavrix::window
