#include "library/ShownRows.h"

namespace tavrix {

ShownRows::ShownRows(const std::vector<FolderNaming::Row>& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (const AssetBundle& bundle : rows[i].group->bundles) rowOf_.emplace(bundle.id(), i);
  }
}

std::vector<std::optional<std::size_t>> ShownRows::of(const MediaGroup& group) const {
  std::vector<std::optional<std::size_t>> rows;
  rows.reserve(group.bundles.size());
  for (const AssetBundle& bundle : group.bundles) {
    const auto found = rowOf_.find(bundle.id());
    const auto before = rows.empty() ? std::nullopt : rows.back();
    rows.push_back(found == rowOf_.end() ? before : std::optional{found->second});
  }
  // Shots before the first displayed one get the row of a later shot.
  for (std::size_t i = rows.size(); i-- > 1;) {
    if (!rows[i - 1]) rows[i - 1] = rows[i];
  }
  return rows;
}

}  // namespace tavrix
