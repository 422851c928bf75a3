#include "library/Choice.h"

#include <algorithm>

#include "foundation/Text.h"
#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using TransferPlanner::NamedGroup;

std::string folded(std::string_view name) { return caseFolded(replacingInvalidUtf8(name)); }

std::uint64_t filesIn(const std::vector<FolderNaming::Row>& rows) {
  std::uint64_t count = 0;
  for (const FolderNaming::Row& row : rows) {
    for (const AssetBundle& bundle : row.group->bundles) count += bundle.assets().size();
  }
  return count;
}

std::uint64_t reducedCopiesIn(const std::vector<FolderNaming::Row>& rows) {
  std::uint64_t count = 0;
  for (const FolderNaming::Row& row : rows) {
    for (const AssetBundle& bundle : row.group->bundles) count += bundle.original().isOptimized();
  }
  return count;
}

/// The groups of rows and the groups merged into them, by id.
using GroupsByID = StringViewMap<const MediaGroup*>;

GroupsByID groupsIn(const std::vector<FolderNaming::Row>& rows) {
  GroupsByID groups;
  for (const FolderNaming::Row& row : rows) {
    groups.emplace(row.group->id, &*row.group);
    for (const MediaGroup& child : row.group->children) groups.emplace(child.id, &child);
  }
  return groups;
}

/// Keeps the reasons that belong to the chosen groups and their shots.
struct ReasonsPart {
  const GroupsByID& all;
  const GroupsByID& chosen;

  void operator()(CalendarReasons&) const {}
  void operator()(FlatReasons&) const {}
  void operator()(EventReasons& reasons) const {
    std::erase_if(reasons.events, [&](const auto& event) { return isGone(event.groupID); });
  }
  void operator()(TripReasons& reasons) const {
    // A shot refers to its stay by number, so the stays of other folders remain.
    std::erase_if(reasons.months, [&](const auto& month) { return isGone(month.groupID); });
    for (TripReasons::Month& month : reasons.months) {
      month.shots = shotsOf(month, *all.at(month.groupID), *chosen.at(month.groupID));
    }
  }

  bool isGone(const std::string& groupID) const { return !chosen.contains(groupID); }

  /// Both groups have their shots in the same order.
  static std::vector<MonthReason> shotsOf(const TripReasons::Month& month, const MediaGroup& before,
                                          const MediaGroup& after) {
    std::vector<MonthReason> shots;
    shots.reserve(after.bundles.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < before.bundles.size() && next < after.bundles.size(); ++i) {
      if (before.bundles[i].id() != after.bundles[next].id()) continue;
      shots.push_back(month.shots.at(i));
      ++next;
    }
    return shots;
  }
};

}  // namespace

Choosing::Choosing(Choice choice, ShotClock clock, StringSet recorded)
    : choice_(std::move(choice)), clock_(std::move(clock)), recorded_(std::move(recorded)) {
  for (const std::string& name : choice_.folders) names_.insert(folded(name));
}

bool Choosing::isNamed(const NamedGroup& folder) const {
  if (choice_.folders.empty()) return true;
  const auto& ids = choice_.folders;
  return std::find(ids.begin(), ids.end(), folder.group->id) != ids.end() ||
         names_.contains(folded(folder.folderName)) ||
         (folder.templateName && names_.contains(folded(*folder.templateName)));
}

void Choosing::check(const Folders& folders) const {
  if (choice_.folders.empty()) return;
  StringSet ids;
  StringSet names;
  std::vector<std::string> known;
  for (const NamedGroup& folder : folders) {
    ids.insert(folder.group->id);
    names.insert(folded(folder.folderName));
    known.push_back(folder.group->id);
    known.push_back(folder.folderName);
    if (!folder.templateName) continue;
    names.insert(folded(*folder.templateName));
    known.push_back(*folder.templateName);
  }
  for (const std::string& wanted : choice_.folders) {
    if (!ids.contains(wanted) && !names.contains(folded(wanted))) {
      throw UnknownFolder{wanted, std::move(known)};
    }
  }
}

bool Choosing::knowsAll(const Folders& folders) const {
  try {
    check(folders);
    return true;
  } catch (const UnknownFolder&) {
    return false;
  }
}

std::optional<AssetBundle> Choosing::partOf(const AssetBundle& shot) const {
  const auto day = clock_.dayOf(shot);
  if (choice_.from && (!day || *day < *choice_.from)) return std::nullopt;
  const auto isExcluded = [&](const MediaAsset& asset) {
    return std::any_of(choice_.excluded.begin(), choice_.excluded.end(),
                       [&](const FileGlob& glob) { return glob.matches(asset.id()); });
  };
  std::vector<MediaAsset> kept;
  if (!choice_.excluded.empty()) {
    if (isExcluded(shot.primaryPicture())) return std::nullopt;
    std::remove_copy_if(shot.assets().begin(), shot.assets().end(), std::back_inserter(kept),
                        isExcluded);
  }
  const bool isWhole = choice_.excluded.empty() || kept.size() == shot.assets().size();
  const std::vector<MediaAsset>& files = isWhole ? shot.assets() : kept;
  const auto isRecorded = [&](const MediaAsset& asset) { return recorded_.contains(asset.id()); };
  if (choice_.isSinceLast && std::all_of(files.begin(), files.end(), isRecorded)) {
    return std::nullopt;
  }
  return isWhole ? shot : BundleBuilder::bundle(shot.id(), std::move(kept));
}

std::optional<MediaGroup> Choosing::partOf(const MediaGroup& group) const {
  MediaGroup part = group;
  part.bundles.clear();
  for (const AssetBundle& shot : group.bundles) {
    if (auto chosen = partOf(shot)) part.bundles.push_back(*std::move(chosen));
  }
  if (part.bundles.empty()) return std::nullopt;
  part.children.clear();
  for (const MediaGroup& child : group.children) {
    if (auto chosen = partOf(child)) part.children.push_back(*std::move(chosen));
  }
  return part;
}

Choosing::Folders Choosing::partOf(const Folders& folders) const {
  const bool choosesShots = choice_.from || !choice_.excluded.empty() || choice_.isSinceLast;
  Folders part;
  for (const NamedGroup& folder : folders) {
    if (!isNamed(folder)) continue;
    if (!choosesShots) {
      part.push_back(folder);
    } else if (auto group = partOf(*folder.group)) {
      part.push_back(folder);
      part.back().group = *std::move(group);
    }
  }
  return part;
}

TransferPlan partOf(const TransferPlan& all, const Choosing::Folders& chosen) {
  absl::flat_hash_set<std::string_view> ids;
  for (const NamedGroup& folder : chosen) {
    for (const AssetBundle& shot : folder.group->bundles) {
      for (const MediaAsset& asset : shot.assets()) ids.insert(asset.id());
    }
  }
  TransferPlan part;
  part.onlyNew = all.onlyNew;
  for (const PlannedFile& file : all.files) {
    if (ids.contains(file.asset.id())) part.files.push_back(file);
  }
  for (std::size_t i = 0; i < all.skippedKnown.size(); ++i) {
    if (!ids.contains(all.skippedKnown[i].id())) continue;
    part.skippedKnown.push_back(all.skippedKnown[i]);
    part.knownPaths.push_back(all.knownPaths[i]);
  }
  std::copy_if(all.differing.begin(), all.differing.end(), std::back_inserter(part.differing),
               [&](const DifferingFile& file) { return ids.contains(file.assetID); });
  return part;
}

Library partOf(Library library, std::vector<FolderNaming::Row> chosen) {
  library.leftOut.byChoice = filesIn(library.rows) - filesIn(chosen);
  // Skipped reduced copies are in no row; their number stays that of the whole library.
  const std::uint64_t reduced = reducedCopiesIn(library.rows);
  if (reduced > 0) library.optimizedCount -= reduced - reducedCopiesIn(chosen);
  if (library.reasons) {
    const GroupsByID all = groupsIn(library.rows);
    const GroupsByID part = groupsIn(chosen);
    std::visit(ReasonsPart{all, part}, *library.reasons);
  }
  library.rows = std::move(chosen);
  return library;
}

Choosing::Folders foldersOf(const std::vector<FolderNaming::Row>& rows) {
  Choosing::Folders folders;
  folders.reserve(rows.size());
  for (const FolderNaming::Row& row : rows) {
    folders.push_back({row.name, row.group, row.templateName});
  }
  return folders;
}

}  // namespace tavrix
