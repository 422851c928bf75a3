#pragma once

#include <absl/container/flat_hash_map.h>

#include <optional>
#include <string_view>
#include <vector>

#include "naming/FolderNaming.h"

namespace tavrix {

/// Tells which of the folders that are shown a shot belongs to, also a reduced copy that the
/// settings leave out. Points into the rows, which must stay.
class ShownRows {
 public:
  explicit ShownRows(const std::vector<FolderNaming::Row>& rows);

  bool contains(const AssetBundle& shot) const { return rowOf_.contains(shot.id()); }
  /// For each shot of a group that was made with all shots: the row that it is in; of a shot that
  /// is in none, the row of the nearest shot of the group that is in one, an earlier one before a
  /// later. Nothing when no shot of the group is shown.
  std::vector<std::optional<std::size_t>> of(const MediaGroup& group) const;

 private:
  absl::flat_hash_map<std::string_view, std::size_t> rowOf_;
};

}  // namespace tavrix
