#include "transfer/FolderContinuation.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "grouping/GroupBuilder.h"

namespace tavrix::FolderContinuation {
namespace {

using TransferPlanner::NamedGroup;

/// The shots of one row that are recorded and on disk, by the folder that holds them.
using ShotsByFolder = std::map<std::string_view, std::vector<const AssetBundle*>>;

/// The folder that a row could continue.
struct Candidate {
  std::string_view folder;
  std::size_t shots = 0;  ///< of the row, in the folder
};

MediaGroup groupOf(const std::string& id, const std::vector<const AssetBundle*>& shots,
                   const ShotClock& clock) {
  std::vector<AssetBundle> bundles;
  bundles.reserve(shots.size());
  for (const AssetBundle* const shot : shots) bundles.push_back(*shot);
  const ShotsByDate byDate = shotsByDate(bundles, clock);
  GroupBuilder builder{id, bundles.size()};
  for (const DatedShot& shot : byDate.dated) builder.add(shot);
  for (const AssetBundle* const shot : byDate.undated) builder.addUndated(*shot);
  MediaGroup group = std::move(builder).finish();
  setCameraDays(group, clock);
  return group;
}

/// Returns the name of a folder without the number that FolderNaming appends.
std::string_view withoutNumber(std::string_view name) {
  const auto open = name.rfind(" (");
  if (open == std::string_view::npos || !name.ends_with(')')) return name;
  const std::string_view number = name.substr(open + 2, name.size() - open - 3);
  const bool isNumber =
      !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
  return isNumber ? name.substr(0, open) : name;
}

/// Finds the folders for a list of rows.
class Continuation {
 public:
  Continuation(const std::vector<FolderNaming::Row>& rows, const Names& names,
               const TransferOptions& options, const DestinationView& destination)
      : rows_(rows), names_(names), options_(options), destination_(destination) {}

  std::vector<NamedGroup> folders() {
    std::vector<NamedGroup> result;
    std::vector<std::optional<Candidate>> candidates;
    result.reserve(rows_.size());
    candidates.reserve(rows_.size());
    for (const FolderNaming::Row& row : rows_) {
      result.push_back({row.name, row.group});
      candidates.push_back(names_.isByHand(*row.group) ? std::nullopt : examine(result.back()));
    }
    assign(candidates, result);
    numberTaken(result);
    for (NamedGroup& row : result) std::erase(row.alsoIn, row.folderName);
    return result;
  }

 private:
  ShotsByFolder shotsByFolder(const MediaGroup& group) const {
    ShotsByFolder shots;
    for (const AssetBundle& bundle : group.bundles) {
      const MediaAsset& asset = bundle.original();
      for (const std::string* const path : destination_.recordedPaths(
               {asset, leadOf(bundle), TransferPlanner::conversion(asset, options_)})) {
        const std::string_view folder = DestinationMarker::folderOf(*path);
        if (folder.empty()) continue;
        auto& inFolder = shots[folder];
        // A folder may hold two copies of a shot.
        if (inFolder.empty() || inFolder.back() != &bundle) inFolder.push_back(&bundle);
      }
    }
    return shots;
  }

  bool isOfSameMaking(std::string_view folder, const MediaGroup& group,
                      const std::vector<const AssetBundle*>& shots) const {
    if (const auto* const making = destination_.making(folder)) return *making == names_.making;
    const std::string name = names_.nameOf(groupOf(group.id, shots, names_.clock));
    return folder == name || withoutNumber(folder) == name;
  }

  /// Returns the folder that the row could continue, and lists all of its folders in the row.
  std::optional<Candidate> examine(NamedGroup& row) const {
    std::optional<Candidate> candidate;
    const ShotsByFolder found = shotsByFolder(*row.group);
    absl::flat_hash_set<const AssetBundle*> all;
    for (const auto& [folder, shots] : found) all.insert(shots.begin(), shots.end());
    for (const auto& [folder, shots] : found) {
      const bool isOwn = folder == row.folderName;
      if (!isOwn && !isOfSameMaking(folder, *row.group, shots)) continue;
      row.alsoIn.emplace_back(folder);
      if (2 * shots.size() <= all.size()) continue;
      // Copies of the shots may be in several folders.
      const bool isBetter =
          !candidate || isOwn ||
          (candidate->folder != row.folderName && shots.size() > candidate->shots);
      if (isBetter) candidate = {folder, shots.size()};
    }
    return candidate;
  }

  void assign(const std::vector<std::optional<Candidate>>& candidates,
              std::vector<NamedGroup>& rows) const {
    StringViewMap<std::size_t> winners;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!candidates[i]) continue;
      const auto [winner, isFirst] = winners.try_emplace(candidates[i]->folder, i);
      const bool hasMore = candidates[i]->shots > candidates[winner->second]->shots;
      if (!isFirst && hasMore) winner->second = i;
    }
    const StringSet byHand = namesByHand(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!candidates[i]) continue;
      const std::string_view folder = candidates[i]->folder;
      const bool isWinner = names_.isShared || winners.at(folder) == i;
      if (!isWinner || folder == rows[i].folderName || byHand.contains(caseFolded(folder)))
        continue;
      rows[i].templateName = std::exchange(rows[i].folderName, std::string{folder});
    }
  }

  StringSet namesByHand(const std::vector<NamedGroup>& rows) const {
    StringSet result;
    for (const NamedGroup& row : rows) {
      if (names_.isByHand(*row.group)) result.insert(caseFolded(row.folderName));
    }
    return result;
  }

  /// Numbers the names of rows that continue nothing but have a name that a continued folder has.
  void numberTaken(std::vector<NamedGroup>& rows) const {
    if (names_.isShared) return;
    StringSet continued;
    StringSet taken;
    for (const NamedGroup& row : rows) {
      taken.insert(caseFolded(row.folderName));
      if (row.templateName) continued.insert(caseFolded(row.folderName));
    }
    if (continued.empty()) return;
    for (NamedGroup& row : rows) {
      if (row.templateName || !continued.contains(caseFolded(row.folderName))) continue;
      const std::string name{withoutNumber(row.folderName)};
      for (std::uint64_t number = 2; !taken.insert(caseFolded(row.folderName)).second; ++number) {
        row.folderName = name + " (" + std::to_string(number) + ")";
      }
    }
  }

  const std::vector<FolderNaming::Row>& rows_;
  const Names& names_;
  const TransferOptions& options_;
  const DestinationView& destination_;
};

}  // namespace

std::vector<NamedGroup> folders(const std::vector<FolderNaming::Row>& rows, const Names& names,
                                const TransferOptions& options,
                                const DestinationView& destination) {
  return Continuation{rows, names, options, destination}.folders();
}

}  // namespace tavrix::FolderContinuation
