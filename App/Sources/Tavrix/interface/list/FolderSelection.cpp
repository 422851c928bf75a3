#include "interface/list/FolderSelection.h"

#include <algorithm>

namespace tavrix::window {

FolderSelection selectionAfter(FolderSelection selection, const FolderRows& rows, std::size_t index,
                               SelectionChange change) {
  const std::uint32_t key = rows.folders[index]->key;
  selection.current = key;
  if (change == SelectionChange::toggle) {
    if (selection.keys.erase(key) == 0) selection.keys.insert(key);
    selection.anchor = key;
    return selection;
  }
  selection.keys.clear();
  std::size_t from = index;
  if (change == SelectionChange::extend && selection.anchor) {
    from = rows.indexOf(*selection.anchor).value_or(index);
  } else {
    selection.anchor = key;
  }
  for (std::size_t i = std::min(from, index); i <= std::max(from, index); ++i) {
    selection.keys.insert(rows.folders[i]->key);
  }
  return selection;
}

FolderSelection listedSelection(FolderSelection selection, const FolderRows& rows) {
  if (selection == FolderSelection{}) return selection;
  std::set<std::uint32_t> listed;
  for (const Shared<DisplayGroup>& folder : rows.folders) listed.insert(folder->key);
  const auto isGone = [&](std::uint32_t key) { return !listed.contains(key); };
  std::erase_if(selection.keys, isGone);
  if (selection.current && isGone(*selection.current)) selection.current.reset();
  if (selection.anchor && isGone(*selection.anchor)) selection.anchor.reset();
  return selection;
}

}  // namespace tavrix::window
