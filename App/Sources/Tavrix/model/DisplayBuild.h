#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "model/AppState.h"
#include "model/DisplayGroup.h"
#include "model/GroupFacts.h"
#include "runs/Destination.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The folders as displayed, and the effect of transferring the visible, checked ones.
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
  AppState::Keys excludedKeys;
  NavSelection navSelection;
  std::string searchText;
  std::string localeID;
  DisplayGroups shown;  ///< of the previous display; unchanged folders stay the same objects
  PlanOfAll planned;    ///< made for the previous display
  /// If true, makes only the folders, all of them visible, without counters, outline and filters.
  bool isBare = false;
};

struct DisplayResult {
  Display display;
  PlanOfAll planned;
};

DisplayResult buildDisplay(const DisplayRequest& request);

/// Returns the groups to be transferred, visible and checked, with their folder names.
std::vector<FolderNaming::Row> chosenRows(const DisplayGroups& visible);

/// Returns the plan for several folders.
TransferPlan planOf(const std::vector<FolderNaming::Row>& rows, const TransferOptions& options,
                    const DestinationView& destination);

}  // namespace tavrix
