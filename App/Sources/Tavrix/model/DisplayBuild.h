#pragma once

#include <memory>
#include <string>
#include <vector>

#include "library/ContinuedFolders.h"
#include "model/AppState.h"
#include "model/DisplayGroup.h"
#include "model/FolderKeys.h"
#include "model/FolderTotals.h"
#include "model/GroupFacts.h"
#include "runs/Destination.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {

/// The folders as displayed, and the effect of transferring the visible, checked ones.
struct Display {
  DisplayGroups groups;
  DisplayGroups visible;
  Shared<NavOutline> outline;
  Shared<std::vector<SearchSuggestion>> suggestions;
  Shared<FolderTotals> totals;
  /// Counted by a plan, for the check marks of the request. Equal to the sum of `totals` if the
  /// folders are apart.
  PlanCounters counters;

  friend bool operator==(const Display&, const Display&) = default;
};

/// A plan with everything it depends on, so that it can be reused.
struct PlanOfAll {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const Destination::Content> destination;
  Shared<Settings> settings;
  TransferOptions options;
  /// The rows of the library as they are transferred.
  Shared<std::vector<TransferPlanner::NamedGroup>> folders;
  std::shared_ptr<const TransferPlan> plan;
};

/// The input of a display; values only, so that a display can be made on any thread.
struct DisplayRequest {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const LibraryFacts> facts;
  std::shared_ptr<const Destination::Content> destination;  ///< nullptr: content unknown
  ContinuationContext naming;                               ///< with the options of the plan
  Shared<CheckMarks> checks;
  NavSelection navSelection;
  std::string searchText;
  std::string localeID;
  std::shared_ptr<FolderKeys> keys;
  Display shown;      ///< the previous display; what is unchanged stays the same object
  PlanOfAll planned;  ///< made for the previous display
  /// If true, makes only the folders, all of them visible, without counters, outline and filters.
  bool isBare = false;
};

struct DisplayResult {
  Display display;
  PlanOfAll planned;
};

DisplayResult buildDisplay(const DisplayRequest& request);

/// Returns the folders of the groups to be transferred, which are visible and checked. `folders`
/// are those of all groups.
std::vector<TransferPlanner::NamedGroup> chosenFolders(
    const std::vector<TransferPlanner::NamedGroup>& folders, const DisplayGroups& visible,
    const CheckMarks& checks);

/// Returns the counters of the plan for the groups that are visible and checked, and the given
/// number of reduced copies. `all` must have been made for the same groups.
PlanCounters countersOf(const PlanOfAll& all, const DisplayGroups& visible,
                        const CheckMarks& checks, std::uint64_t optimizedCount);

/// Returns the counters of a plan, and the given number of reduced copies.
PlanCounters countersOf(const TransferPlan& plan, std::uint64_t optimizedCount);

}  // namespace tavrix
