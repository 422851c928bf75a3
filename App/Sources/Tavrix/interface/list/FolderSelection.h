#pragma once

#include <cstdint>
#include <optional>
#include <set>

#include "interface/list/FolderRows.h"

namespace tavrix::window {

/// The folders that the user has selected, which is apart from their check marks, and the current
/// one, to which keys apply. All of them by key, so that a change of the list keeps them.
struct FolderSelection {
  std::set<std::uint32_t> keys;
  std::optional<std::uint32_t> current;
  std::optional<std::uint32_t> anchor;  ///< the other end of a range

  bool has(std::uint32_t key) const { return keys.contains(key); }
  friend bool operator==(const FolderSelection&, const FolderSelection&) = default;
};

/// The way in which a click or a key changes the selection.
enum class SelectionChange {
  replace,  ///< only this folder
  toggle,   ///< adds or removes it
  extend,   ///< the range from the anchor to it
};

/// Returns the selection after the folder at an index was clicked or reached.
FolderSelection selectionAfter(FolderSelection selection, const FolderRows& rows, std::size_t index,
                               SelectionChange change);
/// Returns the selection without folders that are not listed.
FolderSelection listedSelection(FolderSelection selection, const FolderRows& rows);

}  // namespace tavrix::window
