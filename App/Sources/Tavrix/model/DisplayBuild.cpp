#include "model/DisplayBuild.h"

#include "foundation/StringMap.h"
#include "library/PlanSummary.h"
#include "model/Narrowing.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {
namespace {

const DestinationView& viewOf(const DisplayRequest& request) {
  static const DestinationView nothing;
  return request.destination ? request.destination->view : nothing;
}

/// Returns the plan of all folders. Reuses the earlier one if nothing it depends on has changed.
PlanOfAll planOfAll(const DisplayRequest& request) {
  const PlanOfAll& earlier = request.planned;
  if (earlier.plan && earlier.library == request.library &&
      earlier.destination == request.destination && earlier.options == request.options) {
    return earlier;
  }
  auto plan = planOf(request.library->rows, request.options, viewOf(request));
  return {request.library, request.destination, request.options,
          std::make_shared<const TransferPlan>(std::move(plan))};
}

DisplayGroup makeGroup(const FolderNaming::Row& row, const GroupFacts& facts,
                       const FolderPlan& plan, bool isIncluded) {
  return {.id = row.group.id,
          .stableKey = row.group.id,
          .folderName = row.name,
          .group = facts.group,
          .knownCount = plan.knownFiles,
          .newBytes = plan.newBytes,
          .newCount = plan.newFiles,
          .optimizedCount = facts.optimizedCount,
          .counts = facts.counts,
          .hasLivePhoto = facts.hasLivePhoto,
          .previewAssets = facts.previewAssets,
          .pictureCount = facts.pictureCount,
          .isIncluded = isIncluded};
}

/// Returns the object displayed before if it is equal.
Shared<DisplayGroup> sharedWith(const StringMap<const Shared<DisplayGroup>*>& shown,
                                DisplayGroup group) {
  const auto found = shown.find(group.id);
  // Compares the shots only if they are not the same objects.
  if (found != shown.end() && **found->second == group) return *found->second;
  return group;
}

DisplayGroups groupsOf(const DisplayRequest& request, const std::vector<FolderPlan>& plans) {
  StringMap<const Shared<DisplayGroup>*> shown;
  for (const auto& group : *request.shown) shown.emplace(group->id, &group);
  std::vector<Shared<DisplayGroup>> groups;
  groups.reserve(plans.size());
  for (std::size_t i = 0; i < plans.size(); ++i) {
    const FolderNaming::Row& row = request.library->rows[i];
    const bool isIncluded = !request.excludedKeys->contains(row.group.id);
    groups.push_back(
        sharedWith(shown, makeGroup(row, request.facts->groups[i], plans[i], isIncluded)));
  }
  return groups;
}

DisplayGroups visibleOf(const DisplayRequest& request, const DisplayGroups& groups) {
  const Narrowing narrowing{request.navSelection, request.searchText};
  std::vector<Shared<DisplayGroup>> visible;
  for (std::size_t i = 0; i < groups->size(); ++i) {
    if (narrowing.shows(request.facts->groups[i])) visible.push_back((*groups)[i]);
  }
  return visible;
}

/// Returns the number of reduced copies in the visible, checked folders, whether they are skipped
/// or not. A folder that consists of skipped copies only is not displayed. It is included unless it
/// is unchecked or no displayed folder is checked.
std::uint64_t optimizedIn(const DisplayRequest& request, const Display& display) {
  const LibraryFacts& facts = *request.facts;
  bool isAnyChosen = false;
  std::uint64_t count = 0;
  for (const auto& group : *display.visible) {
    if (!group->isIncluded) continue;
    isAnyChosen = true;
    count += group->optimizedCount;
    const auto skipped = facts.skippedOptimized.find(group->id);
    if (skipped != facts.skippedOptimized.end()) count += skipped->second;
  }
  if (!isAnyChosen && !display.groups->empty()) return count;
  for (const auto& [id, hidden] : facts.hiddenOptimized) {
    if (!request.excludedKeys->contains(id)) count += hidden;
  }
  return count;
}

void count(Display& display, const TransferPlan& plan) {
  display.newFilesCount = plan.files.size();
  display.knownFilesCount = plan.skippedKnown.size();
  for (const PlannedFile& file : plan.files) display.newBytes += file.asset.sizeBytes();
}

}  // namespace

std::vector<FolderNaming::Row> chosenRows(const DisplayGroups& visible) {
  std::vector<FolderNaming::Row> rows;
  for (const auto& group : *visible) {
    if (group->isIncluded) rows.push_back({group->folderName, *group->group});
  }
  return rows;
}

TransferPlan planOf(const std::vector<FolderNaming::Row>& rows, const TransferOptions& options,
                    const DestinationView& destination) {
  std::vector<TransferPlanner::NamedGroup> groups;
  groups.reserve(rows.size());
  for (const FolderNaming::Row& row : rows) groups.push_back({row.name, row.group});
  return TransferPlanner::plan(groups, options, destination);
}

DisplayResult buildDisplay(const DisplayRequest& request) {
  if (request.isBare) {
    DisplayResult bare;
    bare.display.groups = bare.display.visible =
        groupsOf(request, std::vector<FolderPlan>(request.library->rows.size()));
    return bare;
  }
  DisplayResult result{{}, planOfAll(request)};
  Display& display = result.display;
  display.groups = groupsOf(request, rowPlans(request.library->rows, *result.planned.plan));
  display.visible = visibleOf(request, display.groups);
  display.outline = request.facts->outline;
  display.suggestions =
      suggestionsFor(request.searchText, request.facts->outline, request.localeID);
  const auto chosen = chosenRows(display.visible);
  if (chosen.size() == request.library->rows.size()) {
    count(display, *result.planned.plan);
  } else {
    // File names depend on all files of a plan, so the plan for some folders is made separately.
    count(display, planOf(chosen, request.options, viewOf(request)));
  }
  display.optimizedCount = optimizedIn(request, display);
  return result;
}

}  // namespace tavrix
