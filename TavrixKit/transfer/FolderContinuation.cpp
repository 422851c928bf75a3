#include "transfer/FolderContinuation.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "grouping/GroupBuilder.h"
#include "transfer/FileNames.h"

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

MediaGroup groupOf(const std::string& id, const std::vector<const AssetBundle*>& shots) {
  std::vector<AssetBundle> bundles;
  bundles.reserve(shots.size());
  for (const AssetBundle* const shot : shots) bundles.push_back(*shot);
  const ShotsByDate byDate = shotsByDate(bundles);
  GroupBuilder builder{id, bundles.size()};
  for (const DatedShot& shot : byDate.dated) builder.add(shot);
  for (const AssetBundle* const shot : byDate.undated) builder.addUndated(*shot);
  return std::move(builder).finish();
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
      const auto* const path = destination_.recordedPath(
          {asset, leadOf(bundle), TransferPlanner::conversion(asset, options_)});
      const std::string_view folder =
          path == nullptr ? std::string_view{} : DestinationMarker::folderOf(*path);
      if (!folder.empty()) shots[folder].push_back(&bundle);
    }
    return shots;
  }

  bool isOfSameMaking(std::string_view folder, const MediaGroup& group,
                      const std::vector<const AssetBundle*>& shots) const {
    if (const auto* const making = destination_.making(folder)) return *making == names_.making;
    return isNumberedForm(folder, names_.nameOf(groupOf(group.id, shots)));
  }

  /// Returns the folder that the row could continue, and lists all of its folders in the row.
  std::optional<Candidate> examine(NamedGroup& row) const {
    std::optional<Candidate> candidate;
    const ShotsByFolder found = shotsByFolder(*row.group);
    std::size_t total = 0;
    for (const auto& [folder, shots] : found) total += shots.size();
    for (const auto& [folder, shots] : found) {
      const bool isOwn = folder == row.folderName;
      if (!isOwn && !isOfSameMaking(folder, *row.group, shots)) continue;
      if (2 * shots.size() > total) candidate = {folder, shots.size()};
      row.alsoIn.emplace_back(folder);
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
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!candidates[i]) continue;
      const std::string_view folder = candidates[i]->folder;
      const bool isWinner = names_.isShared || winners.at(folder) == i;
      if (!isWinner || folder == rows[i].folderName) continue;
      rows[i].templateName = std::exchange(rows[i].folderName, std::string{folder});
    }
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
      const std::string name = row.folderName;
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
