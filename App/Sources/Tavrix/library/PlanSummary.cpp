#include "library/PlanSummary.h"

#include "foundation/StringMap.h"

namespace tavrix {
namespace {

/// Returns the ids of the known files that have another size in the destination.
absl::flat_hash_set<std::string_view> differingIDs(const TransferPlan& plan) {
  absl::flat_hash_set<std::string_view> ids;
  for (const DifferingFile& file : plan.differing) {
    if (file.kind != DifferingFile::Kind::emptied) ids.insert(file.assetID);
  }
  return ids;
}

}  // namespace

std::vector<FolderPlan> rowPlans(const std::vector<FolderNaming::Row>& rows,
                                 const TransferPlan& plan) {
  std::vector<FolderPlan> folders;
  folders.reserve(rows.size());
  const auto differing = differingIDs(plan);
  // The plan lists the files in row order, without the known ones.
  auto next = plan.files.begin();
  for (const FolderNaming::Row& row : rows) {
    FolderPlan folder{.name = row.name};
    for (const AssetBundle& bundle : row.group->bundles) {
      for (const MediaAsset& asset : bundle.assets()) {
        if (next == plan.files.end() || next->asset.id() != asset.id()) {
          ++folder.knownFiles;
          if (!differing.empty() && differing.contains(asset.id())) ++folder.differingFiles;
          continue;
        }
        ++folder.newFiles;
        folder.newBytes += asset.sizeBytes();
        ++next;
      }
    }
    folders.push_back(std::move(folder));
  }
  return folders;
}

std::vector<FolderPlan> folderPlans(const std::vector<FolderNaming::Row>& rows,
                                    const TransferPlan& plan) {
  std::vector<FolderPlan> folders;
  StringMap<std::size_t> indexOfName;
  for (FolderPlan& row : rowPlans(rows, plan)) {
    const auto [found, isNew] = indexOfName.try_emplace(row.name, folders.size());
    if (isNew) {
      folders.push_back(std::move(row));
      continue;
    }
    FolderPlan& folder = folders[found->second];
    folder.newFiles += row.newFiles;
    folder.newBytes += row.newBytes;
    folder.knownFiles += row.knownFiles;
    folder.differingFiles += row.differingFiles;
  }
  return folders;
}

TransferTally tallyOf(const Library& library, const TransferPlan& plan,
                      const TransferReport& report) {
  TransferTally tally;
  tally.catalogue = library.fileCount;
  tally.leftOut = library.leftOut;
  tally.known = plan.skippedKnown.size();
  tally.differing = differingIDs(plan).size();
  tally.planned = plan.files.size();
  tally.plannedBytes = plan.totalBytes();
  for (const FileOutcome& outcome : report.files) {
    if (outcome.is<FileOutcome::Copied>()) ++tally.copied;
    if (outcome.is<FileOutcome::AlreadyThere>()) ++tally.alreadyThere;
    if (outcome.is<FileOutcome::KeptOriginal>()) ++tally.keptOriginal;
    if (outcome.is<FileOutcome::Failed>()) ++tally.failed;
  }
  tally.notReached = tally.planned - report.files.size();
  return tally;
}

}  // namespace tavrix
