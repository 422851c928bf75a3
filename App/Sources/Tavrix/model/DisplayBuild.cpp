#include "model/DisplayBuild.h"

#include <algorithm>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
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
                       const FolderPlan& plan, FolderKeys& keys) {
  return {.id = row.group->id,
          .stableKey = row.group->id,
          .key = keys.numberOf(row.group->id),
          .folderName = row.name,
          .group = row.group,
          .knownCount = plan.knownFiles,
          .newBytes = plan.newBytes,
          .newCount = plan.newFiles,
          .optimizedCount = facts.optimizedCount,
          .counts = facts.counts,
          .hasLivePhoto = facts.hasLivePhoto,
          .previewAssets = facts.previewAssets,
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

DisplayGroups groupsOf(const DisplayRequest& request, const std::vector<FolderPlan>& plans) {
  StringMap<const Shared<DisplayGroup>*> shown;
  for (const auto& group : *request.shown.groups) shown.emplace(group->id, &group);
  std::vector<Shared<DisplayGroup>> groups;
  groups.reserve(plans.size());
  for (std::size_t i = 0; i < plans.size(); ++i) {
    const FolderNaming::Row& row = request.library->rows[i];
    DisplayGroup group = makeGroup(row, request.facts->groups[i], plans[i], *request.keys);
    const auto found = shown.find(group.id);
    groups.push_back(found == shown.end() ? Shared{std::move(group)}
                                          : keeping(*found->second, std::move(group)));
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

FolderTotals totalsOf(const DisplayRequest& request, const Display& display) {
  const LibraryFacts& facts = *request.facts;
  FolderTotals totals;
  totals.hasFolders = !display.groups->empty();
  totals.areApart = areApart(request.library->rows, request.options);
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
                           const TransferPlan& planOfAll) {
  PlanCounters sums = countersOf(*display.totals, *request.checks);
  if (display.totals->areApart) return sums;
  const auto chosen = chosenRows(display.visible, *request.checks);
  if (chosen.size() == request.library->rows.size()) {
    return countersOf(planOfAll, sums.optimizedCount);
  }
  return countersOf(planOf(chosen, request.options, viewOf(request)), sums.optimizedCount);
}

}  // namespace

std::vector<FolderNaming::Row> chosenRows(const DisplayGroups& visible, const CheckMarks& checks) {
  std::vector<FolderNaming::Row> rows;
  for (const auto& group : *visible) {
    if (checks.isIncluded(group->key)) rows.push_back({group->folderName, group->group});
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

PlanCounters countersOf(const TransferPlan& plan, std::uint64_t optimizedCount) {
  return {.newFilesCount = plan.files.size(),
          .newBytes = plan.totalBytes(),
          .knownFilesCount = plan.skippedKnown.size(),
          .optimizedCount = optimizedCount};
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
  const Display& shown = request.shown;
  display.groups = groupsOf(request, rowPlans(request.library->rows, *result.planned.plan));
  display.visible = visibleOf(request, display.groups);
  display.outline = keeping(shown.outline, request.facts->outline);
  display.suggestions =
      keeping(shown.suggestions,
              suggestionsFor(request.searchText, request.facts->outline, request.localeID));
  display.totals = keeping(shown.totals, totalsOf(request, display));
  display.counters = exactCounters(request, display, *result.planned.plan);
  return result;
}

}  // namespace tavrix
