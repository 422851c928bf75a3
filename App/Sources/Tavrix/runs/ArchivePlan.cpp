#include "runs/ArchivePlan.h"

#include <algorithm>
#include <numeric>

#include "archives/ZipEntry.h"
#include "foundation/StringMap.h"
#include "naming/FolderName.h"
#include "transfer/FileNames.h"
#include "transfer/PathRegister.h"

namespace tavrix {
namespace {

std::string archiveName(const std::string& name) { return fittingName(name + ".zip"); }

/// Also rejects backslashes: some programs treat them as path separators.
bool isKeptAsItIs(std::string_view path) {
  return isSafeEntryName(path) && path.find('\\') == std::string_view::npos;
}

std::string safeName(std::string_view path) {
  std::string name;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    if (begin > 0) name += '/';
    name += FolderName::replacingForbidden(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return name;
}

}  // namespace

std::optional<Packing> packingOf(const Settings& settings, const std::string& deviceName,
                                 CivilDate today) {
  const TransferOptions::Container container = transferOptions(settings, {}).container;
  if (container == TransferOptions::Container::folder) return std::nullopt;
  Packing packing;
  packing.isPerGroup = container == TransferOptions::Container::zipPerGroup;
  packing.isFlat = settings.gathering.uiMode == UIGroupingMode::flat;
  packing.wholeName = FolderName::sanitise(deviceName + " " + dayText(today));
  return packing;
}

std::vector<PlannedArchive> plannedArchives(const TransferPlan& plan, const Packing& packing) {
  std::vector<PlannedArchive> archives;
  if (plan.files.empty()) return archives;
  if (!packing.isPerGroup || packing.isFlat) {
    std::vector<std::size_t> all(plan.files.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    archives.push_back({std::nullopt, archiveName(packing.wholeName), std::move(all)});
    return archives;
  }
  StringMap<std::size_t> indexOfGroup;
  for (std::size_t i = 0; i < plan.files.size(); ++i) {
    const std::string& path = plan.files[i].relativePath;
    const std::string group = path.substr(0, path.find('/'));
    const auto [found, isNew] = indexOfGroup.try_emplace(group, archives.size());
    if (isNew) archives.push_back({group, archiveName(group), {}});
    archives[found->second].files.push_back(i);
  }
  return archives;
}

std::vector<std::string> entryNames(std::vector<std::string> paths) {
  const bool areAllKept = std::all_of(paths.begin(), paths.end(), isKeptAsItIs);
  if (areAllKept) return paths;
  PathRegister given;
  for (const std::string& path : paths) given.add(path);
  for (std::string& path : paths) {
    if (isKeptAsItIs(path)) continue;
    const std::string name = safeName(path);
    std::uint64_t number = 1;
    while (!given.add(numberedPath(name, number))) ++number;
    path = numberedPath(name, number);
  }
  return paths;
}

}  // namespace tavrix
