#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "grouping/MediaGroup.h"

namespace tavrix {

/// Groups that the person wants as one, each merge a list of group ids. Merges are kept apart from
/// the groups and laid over every result of grouping.
using GroupMerges = std::vector<std::vector<std::string>>;

/// Glues groups into one and takes them apart again. Ids that no group has are left alone: they may
/// be there again when the library or a setting changes.
namespace GroupMerging {

/// The id of a merge: "merge:" and its ids in ascending order, each once, with "+" between. The
/// same for the same set of ids, whatever their order.
std::string mergedID(const std::vector<std::string>& ids);

/// The groups with those of each merge replaced by one, which stands where the first of them stood:
/// its `children` are they in their order, its `bundles` theirs in that order, its dates the
/// earliest start and the latest end, its `place` the spherical centre of their places. A group
/// belongs to the first merge that names it. A merge that is left with one group changes nothing.
std::vector<MediaGroup> apply(std::vector<MediaGroup> groups, const GroupMerges& merges);

/// The merges with one more, of these groups. The id of a merge stands for its members, and that
/// merge goes; ids that another merge names leave it.
GroupMerges merging(const GroupMerges& merges, const std::vector<std::string>& ids);
/// The merges without those of an id.
GroupMerges unmerging(GroupMerges merges, std::string_view mergedID);

}  // namespace GroupMerging

}  // namespace tavrix
