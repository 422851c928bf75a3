#include "grouping/GroupMerging.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <set>

#include "grouping/GroupIDs.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::GroupMerging {
namespace {

/// The merge of each group, and the number of groups of each merge.
struct Claims {
  std::vector<std::optional<std::size_t>> mergeOfGroup;
  std::vector<std::size_t> groupsOfMerge;
};

Claims claimsOf(const std::vector<MediaGroup>& groups, const GroupMerges& merges) {
  absl::flat_hash_map<std::string_view, std::size_t> mergeOfID;
  for (std::size_t i = 0; i < merges.size(); ++i) {
    for (const std::string& id : merges[i]) mergeOfID.try_emplace(id, i);
  }
  Claims claims{{}, std::vector<std::size_t>(merges.size())};
  for (const MediaGroup& group : groups) {
    const auto found = mergeOfID.find(group.id);
    const bool isFound = found != mergeOfID.end();
    claims.mergeOfGroup.push_back(isFound ? std::optional{found->second} : std::nullopt);
    if (isFound) ++claims.groupsOfMerge[found->second];
  }
  return claims;
}

/// Sets the dates, the days, the place and the bundles of a merged group from its children.
void gatherChildren(MediaGroup& merged) {
  PlaceClustering::UnitVectorSum sum;
  std::optional<GeoPoint> firstPlace;
  for (const MediaGroup& child : merged.children) {
    merged.bundles.insert(merged.bundles.end(), child.bundles.begin(), child.bundles.end());
    if (!merged.dateStart || (child.dateStart && child.dateStart < merged.dateStart)) {
      merged.dateStart = child.dateStart;
    }
    merged.dateEnd = std::max(merged.dateEnd, child.dateEnd);
    if (child.cameraDays) extend(merged.cameraDays, *child.cameraDays);
    if (!child.place) continue;
    if (!firstPlace) firstPlace = child.place;
    sum.add(*child.place);
  }
  if (firstPlace) merged.place = sum.center(*firstPlace);
}

}  // namespace

std::string mergedID(const std::vector<std::string>& ids) {
  std::string text = "merge:";
  const char* separator = "";
  for (const std::string& id : std::set<std::string>{ids.begin(), ids.end()}) {
    text.append(separator).append(id);
    separator = "+";
  }
  return text;
}

std::vector<MediaGroup> apply(std::vector<MediaGroup> groups, const GroupMerges& merges) {
  if (merges.empty()) return groups;
  const Claims claims = claimsOf(groups, merges);
  GroupIDs ids;
  std::vector<MediaGroup> result;
  std::vector<std::optional<std::size_t>> placeOfMerge(merges.size());
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const auto merge = claims.mergeOfGroup[i];
    if (!merge || claims.groupsOfMerge[*merge] < 2) {
      result.push_back(std::move(groups[i]));
      continue;
    }
    if (!placeOfMerge[*merge]) {
      placeOfMerge[*merge] = result.size();
      result.emplace_back().id = ids.take(mergedID(merges[*merge]));
    }
    result[*placeOfMerge[*merge]].children.push_back(std::move(groups[i]));
  }
  for (MediaGroup& group : result) {
    if (!group.children.empty()) gatherChildren(group);
  }
  return result;
}

GroupMerges merging(const GroupMerges& merges, const std::vector<std::string>& ids) {
  std::set<std::string> members{ids.begin(), ids.end()};
  for (const auto& merge : merges) {
    if (members.erase(mergedID(merge)) > 0) members.insert(merge.begin(), merge.end());
  }
  GroupMerges result;
  for (auto merge : merges) {
    std::erase_if(merge, [&](const std::string& id) { return members.contains(id); });
    if (!merge.empty()) result.push_back(std::move(merge));
  }
  if (!members.empty()) result.emplace_back(members.begin(), members.end());
  return result;
}

GroupMerges unmerging(GroupMerges merges, std::string_view id) {
  std::erase_if(merges, [&](const auto& merge) { return mergedID(merge) == id; });
  return merges;
}

}  // namespace tavrix::GroupMerging
