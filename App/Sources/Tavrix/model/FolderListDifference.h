#pragma once

#include <cstddef>
#include <vector>

#include "model/DisplayGroup.h"

namespace tavrix {

/// The steps from one list of folders to another, for a view that keeps its rows. Folders are
/// identified by their keys, which are unique within a list. Applied in the order of the fields:
/// first the removals, then the moves and insertions, then the changes.
struct FolderListDifference {
  struct Move {
    std::size_t from = 0;  ///< index in the old list
    std::size_t to = 0;    ///< index in the new list

    friend bool operator==(const Move&, const Move&) = default;
  };

  /// Too much has changed: the view must take the new list as a whole, and the other fields are
  /// empty.
  bool isReset = false;
  std::vector<std::size_t> removed;   ///< indexes in the old list, ascending
  std::vector<Move> moved;            ///< ascending by `to`
  std::vector<std::size_t> inserted;  ///< indexes in the new list, ascending
  /// Indexes in the new list, ascending, of folders whose key stayed while their content changed.
  std::vector<std::size_t> changed;

  bool isEmpty() const {
    return !isReset && removed.empty() && moved.empty() && inserted.empty() && changed.empty();
  }
  friend bool operator==(const FolderListDifference&, const FolderListDifference&) = default;
};

/// Returns the difference with the fewest moves. Returns a reset if more than a third of the
/// folders of the longer list are removed, moved, inserted or changed. A folder is unchanged if it
/// is the same object in both lists; the display keeps the objects of folders whose values stay
/// equal.
FolderListDifference differenceOf(const DisplayGroups& before, const DisplayGroups& after);

}  // namespace tavrix
