#include "transfer/CopiesAgain.h"

#include <algorithm>
#include <map>

namespace tavrix {
namespace {

using DestinationMarker::FolderMaking;

std::string valueOf(const FolderMaking& making, const std::string& key) {
  const auto found = making.find(key);
  return found == making.end() ? std::string{} : found->second;
}

std::vector<CopiesAgain::Change> changesBetween(const FolderMaking& before,
                                                const FolderMaking& now) {
  FolderMaking keys = before;
  keys.insert(now.begin(), now.end());
  std::vector<CopiesAgain::Change> changes;
  for (const auto& [key, value] : keys) {
    CopiesAgain::Change change{key, valueOf(before, key), valueOf(now, key)};
    if (change.before != change.now) changes.push_back(std::move(change));
  }
  // Another mode has other settings; those follow from it.
  const auto isInEffectOnce = [](const CopiesAgain::Change& change) {
    return change.before.empty() || change.now.empty();
  };
  if (!std::all_of(changes.begin(), changes.end(), isInEffectOnce)) {
    std::erase_if(changes, isInEffectOnce);
  }
  return changes;
}

}  // namespace

CopiesAgain copiesAgain(const TransferPlan& plan, const FolderMaking& making,
                        const DestinationView& destination) {
  CopiesAgain again;
  if (!plan.onlyNew || destination.isEmpty()) return again;
  std::map<std::string_view, std::uint64_t> byFolder;
  for (const PlannedFile& file : plan.files) {
    const std::string* const path = destination.recordedPath(file.wanted());
    if (path == nullptr || *path == file.relativePath) continue;
    ++again.files;
    ++byFolder[DestinationMarker::folderOf(*path)];
  }
  std::uint64_t most = 0;
  for (const auto& [folder, count] : byFolder) {
    const auto* const made = destination.making(folder);
    if (made == nullptr || **made == making) {
      if (!folder.empty()) again.folders.emplace_back(folder);
    } else if (count > most) {
      most = count;
      again.changes = changesBetween(**made, making);
    }
  }
  return again;
}

}  // namespace tavrix
