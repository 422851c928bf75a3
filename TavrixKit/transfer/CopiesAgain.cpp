#include "transfer/CopiesAgain.h"

#include <algorithm>
#include <map>

namespace tavrix {
CopiesAgain copiesAgain(const TransferPlan& plan, const DestinationMarker::FolderMaking& making,
                        const DestinationView& destination) {
  CopiesAgain again;
  if (!plan.onlyNew || destination.isEmpty()) return again;
  std::map<std::string_view, std::uint64_t> byFolder;
  for (const PlannedFile& file : plan.files) {
    const auto paths = destination.recordedPaths(file.wanted());
    if (paths.empty() || *paths.front() == file.relativePath) continue;
    ++again.files;
    ++byFolder[DestinationMarker::folderOf(*paths.front())];
  }
  std::uint64_t most = 0;
  for (const auto& [folder, count] : byFolder) {
    const auto* const made = destination.making(folder);
    if (made == nullptr || **made == making) {
      if (!folder.empty()) again.folders.emplace_back(folder);
    } else if (count > most) {
      most = count;
      again.before = **made;
    }
  }
  return again;
}

}  // namespace tavrix
