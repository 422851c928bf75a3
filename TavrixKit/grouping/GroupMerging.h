#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "grouping/MediaGroup.h"

namespace tavrix {

/// The groups that the user wants to merge. Each merge is a list of group ids. Merges are stored
/// separately from the groups and applied to every result of grouping.
using GroupMerges = std::vector<std::vector<std::string>>;

/// Merges groups and separates them again. Ids that no group has are kept: such groups may exist
/// again after the library or a setting changes.
namespace GroupMerging {

/// Returns the id of a merge: "merge:" and its ids in ascending order, each once, separated by "+".
/// It does not depend on the order of `ids`.
std::string mergedID(const std::vector<std::string>& ids);

/// Replaces the groups of each merge by one merged group, at the position of the first of them. The
/// merged group has the groups as `children` and their shots as `bundles`, both in the order of the
/// groups. Its dates are the earliest start and the latest end, its `place` is the spherical centre
/// of their places. A group belongs to the first merge that has its id. A merge with only one
/// existing group changes nothing.
std::vector<MediaGroup> apply(std::vector<MediaGroup> groups, const GroupMerges& merges);

/// Returns the merges with a new one for `ids` added. An id of a merge stands for the members of
/// that merge, which is removed. The ids of the new merge are removed from all other merges.
GroupMerges merging(const GroupMerges& merges, const std::vector<std::string>& ids);
/// Returns the merges without the one whose id is `mergedID`.
GroupMerges unmerging(GroupMerges merges, std::string_view mergedID);

}  // namespace GroupMerging

}  // namespace tavrix
