#pragma once

#include <absl/container/flat_hash_map.h>

#include <optional>
#include <string_view>
#include <vector>

#include "naming/FolderNaming.h"

namespace tavrix {

/// Finds the displayed folder of a shot, even of a reduced copy that the settings exclude. Refers
/// to the rows, which must outlive it.
class ShownRows {
 public:
  explicit ShownRows(const std::vector<FolderNaming::Row>& rows);

  bool contains(const AssetBundle& shot) const { return rowOf_.contains(shot.id()); }
  /// Returns the row of each shot of a group that was made from all shots. A shot in no row gets
  /// the row of its nearest neighbour in the group that is in one; an earlier neighbour takes
  /// precedence. All entries are nullopt if no shot of the group is displayed.
  std::vector<std::optional<std::size_t>> of(const MediaGroup& group) const;

 private:
  absl::flat_hash_map<std::string_view, std::size_t> rowOf_;
};

}  // namespace tavrix
