#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "grouping/GroupingMode.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/HomePeriods.h"
#include "grouping/MediaGroup.h"
#include "grouping/MergeSuggestion.h"
#include "media/BundleFilter.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// Turns shots into folders. A pure computation without state between calls.
namespace GroupingEngine {

struct Request {
  std::vector<AssetBundle> bundles;
  BundleFilter filter;
  GroupingMode mode;
  GroupingSettings settings;
  /// A home chosen by the user; used only if the settings have none.
  std::optional<GeoPoint> homeOverride;
  std::shared_ptr<const PlaceLookup> placeLookup;
  bool wantsReasons = false;  ///< whether to return the reasons for the bounds of the groups
  /// The merges of the mode, which are not applied here: outings that they name become groups.
  GroupMerges merges{};
};

struct Result {
  std::vector<AssetBundle> filteredBundles;
  /// Dated groups, sorted by start and then by id; "no-date" is last.
  std::vector<MediaGroup> groups;
  /// Best first. Only in trips mode, but also if the user has chosen a home.
  std::vector<HomeCandidate> homeCandidates;
  bool homeIsAmbiguous = false;
  /// The homes one after another, if the settings ask for them and there are several; then the last
  /// one decides on `homeIsAmbiguous`.
  std::vector<HomePeriod> homePeriods{};
  std::optional<GroupingReasons> reasons;    ///< only if the request wants them
  std::vector<MergeSuggestion> suggestions;  ///< only in trips mode; also those merged already

  friend bool operator==(const Result&, const Result&) = default;
};

/// Filters the bundles and groups those that pass. Never fails; without bundles the result has no
/// groups. Trips are measured from the chosen home, otherwise from that of their time, otherwise
/// from the best candidate.
Result group(const Request& request);

}  // namespace GroupingEngine

}  // namespace tavrix
