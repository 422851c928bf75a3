#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/AppState.h"
#include "model/DisplayGroup.h"
#include "model/FolderKeys.h"
#include "model/FolderTotals.h"
#include "model/GroupFacts.h"
#include "runs/Destination.h"
#include "transfer/TransferPlan.h"

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
  TransferOptions options;
  std::shared_ptr<const TransferPlan> plan;
};

/// The input of a display; values only, so that a display can be made on any thread.
struct DisplayRequest {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const LibraryFacts> facts;
  std::shared_ptr<const Destination::Content> destination;  ///< nullptr: content unknown
  TransferOptions options;
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

/// Returns the groups to be transferred, visible and checked, with their folder names.
std::vector<FolderNaming::Row> chosenRows(const DisplayGroups& visible, const CheckMarks& checks);

/// Returns the plan for several folders.
TransferPlan planOf(const std::vector<FolderNaming::Row>& rows, const TransferOptions& options,
                    const DestinationView& destination);

/// Returns the counters of a plan, and the given number of reduced copies.
PlanCounters countersOf(const TransferPlan& plan, std::uint64_t optimizedCount);

}  // namespace tavrix
