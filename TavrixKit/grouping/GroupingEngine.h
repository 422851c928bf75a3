#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "grouping/GroupingMode.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/HomeDetection.h"
#include "grouping/MediaGroup.h"
#include "media/BundleFilter.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// Turns shots into folders. A pure computation that keeps no state between calls.
namespace GroupingEngine {

struct Request {
  std::vector<AssetBundle> bundles;
  BundleFilter filter;
  GroupingMode mode;
  GroupingSettings settings;
  /// A home chosen by the person, where the settings carry none.
  std::optional<GeoPoint> homeOverride;
  std::shared_ptr<const PlaceLookup> placeLookup;
  bool wantsReasons = false;  ///< whether to tell why groups were cut where they were
};

struct Result {
  std::vector<AssetBundle> filteredBundles;
  /// Dated groups in chronological order of their start, then by id; "no-date" last.
  std::vector<MediaGroup> groups;
  /// Best first; only of trips mode, and whether or not the person has chosen a home.
  std::vector<HomeCandidate> homeCandidates;
  bool homeIsAmbiguous = false;
  std::optional<GroupingReasons> reasons;  ///< when they were wanted

  friend bool operator==(const Result&, const Result&) = default;
};

/// Filters the bundles and groups the survivors. Never fails; no bundles give no groups. Trips are
/// measured from the home that was chosen, else from the best candidate.
Result group(const Request& request);

}  // namespace GroupingEngine

}  // namespace tavrix
