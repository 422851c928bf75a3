#include "transfer/SafeNumbers.h"

#include <algorithm>

#include "foundation/Text.h"
#include "transfer/FileNames.h"
#include "transfer/SafeNames.h"

namespace tavrix {

const SafeNumbers::Files& SafeNumbers::filesOf(std::string_view bundleID) {
  if (filesByBundle_.empty()) {
    for (const PlannedFile& file : plan_.files) filesByBundle_[file.bundleID()].push_back(&file);
  }
  return filesByBundle_[bundleID];
}

bool SafeNumbers::isFree(const PlannedFile& file, const std::string& path,
                         const IsPlanned& isPlanned) const {
  if (isPlanned(path)) return false;
  const auto reserved = reserved_.find(caseFolded(path));
  if (reserved != reserved_.end() && reserved->second != file.bundleID()) return false;
  const auto status = destination_.status(path);
  if (!status) return true;
  return status->type == FileStatus::Type::file &&
         (isConverted(file.conversion) || status->size == file.asset.sizeBytes());
}

std::uint64_t SafeNumbers::numberOf(const PlannedFile& file, const IsPlanned& isPlanned) {
  const std::lock_guard lock{mutex_};
  const auto known = numbers_.find(file.bundleID());
  if (known != numbers_.end()) return known->second;
  std::vector<std::pair<const PlannedFile*, std::string>> files;
  for (const PlannedFile* const each : filesOf(file.bundleID())) {
    std::string safe = SafeNames::safePath(each->relativePath);
    // Files that keep their planned names need no number.
    if (safe != each->relativePath) files.emplace_back(each, std::move(safe));
  }
  std::uint64_t number = 1;
  const auto isFreeHere = [&](const auto& each) {
    return isFree(*each.first, numberedPath(each.second, number), isPlanned);
  };
  while (!std::all_of(files.begin(), files.end(), isFreeHere)) ++number;
  for (const auto& [each, safe] : files)
    reserved_.try_emplace(caseFolded(numberedPath(safe, number)), each->bundleID());
  return numbers_[file.bundleID()] = number;
}

}  // namespace tavrix
