#include "model/DisplayBuild.h"

#include <algorithm>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "library/PlanSummary.h"
#include "model/Narrowing.h"

namespace tavrix {
namespace {

const DestinationView& viewOf(const std::shared_ptr<const Destination::Content>& destination) {
  static const DestinationView nothing;
  return destination ? destination->view : nothing;
}

/// Returns the plan of all folders. Reuses the earlier one if nothing it depends on has changed.
PlanOfAll planOfAll(const DisplayRequest& request) {
  const PlanOfAll& earlier = request.planned;
  const ContinuationContext& naming = request.naming;
  if (earlier.plan && earlier.library == request.library &&
      earlier.destination == request.destination && earlier.settings == naming.settings &&
      earlier.options == naming.options) {
    return earlier;
  }
  const DestinationView& destination = viewOf(request.destination);
  auto folders = continuedFolders(request.library->rows, naming, destination);
  auto plan = TransferPlanner::plan(folders, naming.options, destination);
  return {request.library,    request.destination,
          naming.settings,    naming.options,
          std::move(folders), std::make_shared<const TransferPlan>(std::move(plan))};
}

DisplayGroup makeGroup(const FolderNaming::Row& row, const GroupFacts& facts,
                       const FolderPlan& plan, FolderKeys& keys) {
  return {.id = row.group->id,
          .stableKey = row.group->id,
          .key = keys.numberOf(row.group->id),
          .folderName = row.name,
          .templateName = row.templateName,
          .group = row.group,
          .knownCount = plan.knownFiles,
          .newBytes = plan.newBytes,
          .newCount = plan.newFiles,
          .optimizedCount = facts.optimizedCount,
          .counts = facts.counts,
          .hasLivePhoto = facts.hasLivePhoto,
          .isFileDated = facts.isFileDated,
          .faces = facts.faces,
          .pictureCount = facts.pictureCount};
}

/// Returns the previous value if the next one is equal, so that it stays the same object.
template <typename Value>
Shared<Value> keeping(const Shared<Value>& previous, Value next) {
  return *previous == next ? previous : Shared<Value>{std::move(next)};
}

/// As keeping(), for lists of folders that are the same objects if they are equal.
DisplayGroups keepingList(const DisplayGroups& previous, std::vector<Shared<DisplayGroup>> next) {
  const bool isSameList = std::equal(previous->begin(), previous->end(), next.begin(), next.end(),
                                     [](const auto& a, const auto& b) { return isSame(a, b); });
  return isSameList ? previous : DisplayGroups{std::move(next)};
}

/// The shown folders by id.
using ShownGroups = StringMap<const Shared<DisplayGroup>*>;

/// Returns the shown folder of the same id if it is equal, else a new object.
Shared<DisplayGroup> keepingShown(const ShownGroups& shown, DisplayGroup next) {
  const auto found = shown.find(next.id);
  if (found == shown.end()) return Shared{std::move(next)};
  return keeping(*found->second, std::move(next));
}

DisplayGroups groupsOf(const DisplayRequest& request, const std::vector<FolderNaming::Row>& rows,
                       const std::vector<FolderPlan>& plans) {
  ShownGroups shown;
  for (const auto& group : *request.shown.groups) shown.emplace(group->id, &group);
  std::vector<Shared<DisplayGroup>> groups;
  groups.reserve(plans.size());
  for (std::size_t i = 0; i < plans.size(); ++i) {
    groups.push_back(
        keepingShown(shown, makeGroup(rows[i], request.facts->groups[i], plans[i], *request.keys)));
  }
  return keepingList(request.shown.groups, std::move(groups));
}

DisplayGroups visibleOf(const DisplayRequest& request, const DisplayGroups& groups) {
  const Narrowing narrowing{request.navSelection, request.searchText};
  std::vector<Shared<DisplayGroup>> visible;
  for (std::size_t i = 0; i < groups->size(); ++i) {
    if (narrowing.shows(request.facts->groups[i])) visible.push_back((*groups)[i]);
  }
  if (visible.size() == groups->size()) return groups;
  return keepingList(request.shown.visible, std::move(visible));
}

/// Returns true if no two folders can have files with the same path: each is a folder of its own,
/// also without regard to letter case.
bool areApart(const std::vector<FolderNaming::Row>& rows, const TransferOptions& options) {
  if (options.flatLayout) return rows.size() <= 1;
  StringSet names;
  return std::all_of(rows.begin(), rows.end(), [&](const FolderNaming::Row& row) {
    return names.insert(caseFolded(replacingInvalidUtf8(row.name))).second;
  });
}

FolderTotals totalsOf(const DisplayRequest& request, const std::vector<FolderNaming::Row>& rows,
                      const Display& display) {
  const LibraryFacts& facts = *request.facts;
  FolderTotals totals;
  totals.hasFolders = !display.groups->empty();
  totals.areApart = areApart(rows, request.naming.options);
  totals.visible.reserve(display.visible->size());
  for (const auto& group : *display.visible) {
    const auto skipped = facts.skippedOptimized.find(group->id);
    const std::uint64_t more = skipped == facts.skippedOptimized.end() ? 0 : skipped->second;
    totals.visible.push_back({group->key,
                              {.newFilesCount = group->newCount,
                               .newBytes = group->newBytes,
                               .knownFilesCount = group->knownCount,
                               .optimizedCount = group->optimizedCount + more}});
  }
  for (const auto& [id, hidden] : facts.hiddenOptimized) {
    totals.hidden.push_back({request.keys->numberOf(id), {.optimizedCount = hidden}});
  }
  return totals;
}

/// File names depend on all files of a plan, so if folders share paths, the plan for some of them
/// is made separately.
PlanCounters exactCounters(const DisplayRequest& request, const Display& display,
                           const PlanOfAll& planned) {
  PlanCounters sums = countersOf(*display.totals, *request.checks);
  if (display.totals->areApart) return sums;
  return countersOf(planned, display.visible, *request.checks, sums.optimizedCount);
}

}  // namespace

std::vector<MediaAsset> previewAssets(const DisplayGroup& group) {
  std::vector<MediaAsset> assets;
  for (const GroupFaces::Face& face : group.faces->faces) assets.push_back(face.asset);
  return assets;
}

std::vector<TransferPlanner::NamedGroup> chosenFolders(
    const std::vector<TransferPlanner::NamedGroup>& folders, const DisplayGroups& visible,
    const CheckMarks& checks) {
  absl::flat_hash_set<std::string_view> chosen;
  for (const auto& group : *visible) {
    if (checks.isIncluded(group->key)) chosen.insert(group->id);
  }
  std::vector<TransferPlanner::NamedGroup> result;
  result.reserve(chosen.size());
  std::copy_if(folders.begin(), folders.end(), std::back_inserter(result),
               [&](const auto& folder) { return chosen.contains(folder.group->id); });
  return result;
}

PlanCounters countersOf(const PlanOfAll& all, const DisplayGroups& visible,
                        const CheckMarks& checks, std::uint64_t optimizedCount) {
  const auto chosen = chosenFolders(*all.folders, visible, checks);
  if (chosen.size() == all.folders->size()) return countersOf(*all.plan, optimizedCount);
  return countersOf(TransferPlanner::plan(chosen, all.options, viewOf(all.destination)),
                    optimizedCount);
}

PlanCounters countersOf(const TransferPlan& plan, std::uint64_t optimizedCount) {
  return {.newFilesCount = plan.files.size(),
          .newBytes = plan.totalBytes(),
          .knownFilesCount = plan.skippedKnown.size(),
          .optimizedCount = optimizedCount};
}

DisplayResult buildDisplay(const DisplayRequest& request) {
  if (request.isBare) {
    DisplayResult bare;
    bare.display.groups = bare.display.visible = groupsOf(
        request, request.library->rows, std::vector<FolderPlan>(request.library->rows.size()));
    return bare;
  }
  DisplayResult result{{}, planOfAll(request)};
  Display& display = result.display;
  const Display& shown = request.shown;
  const auto rows = rowsOf(*result.planned.folders);
  display.groups = groupsOf(request, rows, rowPlans(rows, *result.planned.plan));
  display.visible = visibleOf(request, display.groups);
  display.outline = keeping(shown.outline, request.facts->outline);
  display.suggestions =
      keeping(shown.suggestions,
              suggestionsFor(request.searchText, request.facts->outline, request.localeID));
  display.totals = keeping(shown.totals, totalsOf(request, rows, display));
  display.counters = exactCounters(request, display, result.planned);
  return result;
}

}  // namespace tavrix
