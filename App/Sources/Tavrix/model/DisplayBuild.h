#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Destination.h"
#include "model/AppState.h"
#include "model/DisplayGroup.h"
#include "model/GroupFacts.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The folders as they are shown, and what a transfer of the visible, checked ones would do.
struct Display {
  DisplayGroups groups;
  DisplayGroups visible;
  Shared<NavOutline> outline;
  std::vector<SearchSuggestion> suggestions;
  std::uint64_t newFilesCount = 0;
  std::uint64_t newBytes = 0;
  std::uint64_t knownFilesCount = 0;
  std::uint64_t optimizedCount = 0;

  friend bool operator==(const Display&, const Display&) = default;
};

/// A plan with all that it depends on, so that it need not be made again.
struct PlanOfAll {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const Destination::Content> destination;
  TransferOptions options;
  std::shared_ptr<const TransferPlan> plan;
};

/// What a display is made from; values only, so that it can be made on any thread.
struct DisplayRequest {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const LibraryFacts> facts;
  std::shared_ptr<const Destination::Content> destination;  ///< null: nothing is known of it
  TransferOptions options;
  AppState::Keys excludedKeys;
  NavSelection navSelection;
  std::string searchText;
  std::string localeID;
  DisplayGroups shown;  ///< from the display before; what did not change stays the same object
  PlanOfAll planned;    ///< made for the display before
  /// Without counters, outline and narrowing: the folders alone, all of them visible.
  bool isBare = false;
};

struct DisplayResult {
  Display display;
  PlanOfAll planned;
};

DisplayResult buildDisplay(const DisplayRequest& request);

/// The groups that a transfer takes: visible and checked, with their folder names.
std::vector<FolderNaming::Row> chosenRows(const DisplayGroups& visible);

/// The plan of some folders.
TransferPlan planOf(const std::vector<FolderNaming::Row>& rows, const TransferOptions& options,
                    const DestinationView& destination);

}  // namespace tavrix
