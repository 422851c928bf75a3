#include <algorithm>

#include "interface/list/FolderListModel.h"

namespace tavrix::window {

const DisplayGroup* FolderListModel::folderAt(int row) const {
  const auto index = static_cast<std::size_t>(row);
  return row >= 0 && index < rows_.folders.size() ? &*rows_.folders[index] : nullptr;
}

QString FolderListModel::nameOf(int row) const {
  const DisplayGroup* const folder = folderAt(row);
  return folder == nullptr ? QString{} : QString::fromStdString(folder->folderName);
}

int FolderListModel::currentRow() const {
  if (!selection_.current) return none;
  const auto index = rows_.indexOf(*selection_.current);
  return index ? static_cast<int>(*index) : none;
}

void FolderListModel::toggle(int row) {
  if (const DisplayGroup* const folder = folderAt(row)) model_.toggleGroup(folder->stableKey);
}

void FolderListModel::click(int row, int modifiers) {
  if (folderAt(row) == nullptr) return;
  auto change = SelectionChange::replace;
  const Qt::KeyboardModifiers keys{modifiers};
  if (keys.testFlag(Qt::ControlModifier)) change = SelectionChange::toggle;
  if (keys.testFlag(Qt::ShiftModifier)) change = SelectionChange::extend;
  select(selectionAfter(selection_, rows_, static_cast<std::size_t>(row), change));
}

void FolderListModel::point(int row) {
  const DisplayGroup* const folder = folderAt(row);
  if (folder != nullptr && !selection_.has(folder->key)) click(row, Qt::NoModifier);
}

void FolderListModel::move(Step step, bool extends) {
  if (rows_.folders.empty()) return;
  const std::size_t row = rowAfter(step, currentRow());
  const auto change = extends ? SelectionChange::extend : SelectionChange::replace;
  select(selectionAfter(selection_, rows_, row, change));
  moveIntoView(row);
}

void FolderListModel::clearSelection() {
  select({.keys = {}, .current = selection_.current, .anchor = std::nullopt});
}

std::vector<Shared<DisplayGroup>> FolderListModel::chosenFolders() const {
  std::vector<Shared<DisplayGroup>> chosen;
  const auto isChosen = [&](const Shared<DisplayGroup>& folder) {
    return selection_.keys.empty() ? selection_.current == folder->key
                                   : selection_.has(folder->key);
  };
  std::ranges::copy_if(rows_.folders, std::back_inserter(chosen), isChosen);
  return chosen;
}

void FolderListModel::revealAwaited() {
  if (!awaited_) return;
  const auto found = std::ranges::find_if(
      rows_.folders, [&](const Shared<DisplayGroup>& folder) { return folder->id == *awaited_; });
  if (found == rows_.folders.end()) return;
  awaited_.reset();
  const auto row = static_cast<std::size_t>(found - rows_.folders.begin());
  select(selectionAfter(selection_, rows_, row, SelectionChange::replace));
  moveIntoView(row);
}

void FolderListModel::select(FolderSelection selection) {
  if (selection == selection_) return;
  const FolderSelection old = std::exchange(selection_, std::move(selection));
  refresh([&](int row) {
    const DisplayGroup* const folder = folderAt(row);
    return folder == nullptr || old.has(folder->key) != selection_.has(folder->key) ||
           (old.current == folder->key) != (selection_.current == folder->key);
  });
  Q_EMIT selectionChanged();
}

}  // namespace tavrix::window
