#include "interface/grid/SlotModel.h"

namespace tavrix::window {

int SlotModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int SlotModel::entryAt(const QModelIndex& slot) const {
  return slot.isValid() ? entries_[static_cast<std::size_t>(slot.row())] : none;
}

void SlotModel::show(FolderLayout::Range entries) {
  const std::size_t needed = entries.last - entries.first;
  if (needed > entries_.size()) {
    beginInsertRows({}, static_cast<int>(entries_.size()), static_cast<int>(needed) - 1);
    entries_.resize(needed, none);
    endInsertRows();
  }
  std::vector<int> wanted(entries_.size(), none);
  for (std::size_t entry = entries.first; entry < entries.last; ++entry) {
    wanted[entry % wanted.size()] = static_cast<int>(entry);
  }
  for (std::size_t slot = 0; slot < wanted.size(); ++slot) {
    if (entries_[slot] == wanted[slot]) continue;
    entries_[slot] = wanted[slot];
    const QModelIndex changed = index(static_cast<int>(slot));
    Q_EMIT dataChanged(changed, changed);
  }
}

void SlotModel::refresh(const std::function<bool(int)>& isStale) {
  for (std::size_t slot = 0; slot < entries_.size(); ++slot) {
    if (entries_[slot] == none || !isStale(entries_[slot])) continue;
    const QModelIndex changed = index(static_cast<int>(slot));
    Q_EMIT dataChanged(changed, changed);
  }
}

void SlotModel::refreshAll() {
  if (!entries_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

}  // namespace tavrix::window
