#include "ArchivePlan.h"

#include <numeric>

#include "foundation/StringMap.h"
#include "naming/FolderName.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

std::string archiveName(const std::string& name) { return fittingName(name + ".zip"); }

}  // namespace

std::optional<Packing> packingOf(const Settings& settings, const std::string& deviceName,
                                 CivilDate today) {
  const TransferOptions::Container container = transferOptions(settings, {}).container;
  if (container == TransferOptions::Container::folder) return std::nullopt;
  Packing packing;
  packing.isPerGroup = container == TransferOptions::Container::zipPerGroup;
  packing.isFlat = settings.uiMode == UIGroupingMode::flat;
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

}  // namespace tavrix
