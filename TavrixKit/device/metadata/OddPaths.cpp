#include "device/metadata/OddPaths.h"

#include <algorithm>

#include "media/Snapshot.h"

namespace tavrix {
namespace {

bool holds(const SnapshotItem& item, std::string_view text) {
  return item.name.find(text) != std::string::npos ||
         (item.dir && item.dir->find(text) != std::string::npos);
}

}  // namespace

bool OddPaths::isReplaced(const SnapshotItem& item) { return holds(item, "\xEF\xBF\xBD"); }

OddPaths::OddPaths(const std::vector<SnapshotItem>& items, const std::vector<std::string>& paths) {
  if (std::none_of(items.begin(), items.end(), isReplaced)) return;
  // Only these items can have an id that occurs twice, or one that equals a numbered id. So the ids
  // of all other items need not be computed.
  std::vector<SnapshotItem> odd;
  std::vector<std::size_t> indexes;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!isReplaced(items[i]) && !holds(items[i], "#")) continue;
    odd.push_back(items[i]);
    indexes.push_back(i);
  }
  const auto assets = Snapshot::assetsOf(odd, TimeZone::utc());
  for (std::size_t i = 0; i < assets.size(); ++i) {
    const std::string& path = paths[indexes[i]];
    if (assets[i].id() != path) paths_[assets[i].id()] = path;
  }
}

std::string OddPaths::pathOf(std::string_view id) const {
  const auto found = paths_.find(id);
  return found == paths_.end() ? std::string{id} : found->second;
}

}  // namespace tavrix
