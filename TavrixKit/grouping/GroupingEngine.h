#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "grouping/GroupingMode.h"
#include "grouping/GroupingSettings.h"
#include "grouping/MediaGroup.h"
#include "media/BundleFilter.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// A place that may be the person's home.
struct HomeCandidate {
  GeoPoint center;
  std::int64_t recentDays = 0;  ///< days with a shot inside the recent span
  std::int64_t totalDays = 0;   ///< days with a shot
  std::int64_t pointCount = 0;  ///< located shots
  std::optional<Instant> firstDate;
  std::optional<Instant> lastDate;

  friend bool operator==(const HomeCandidate&, const HomeCandidate&) = default;
};

/// Turns shots into folders. A pure computation that keeps no state between calls.
namespace GroupingEngine {

struct Request {
  std::vector<AssetBundle> bundles;
  BundleFilter filter;
  GroupingMode mode;
  GroupingSettings settings;
  std::optional<GeoPoint> homeOverride;
  std::shared_ptr<const PlaceLookup> placeLookup;
};

struct Result {
  std::vector<AssetBundle> filteredBundles;
  /// Dated groups in chronological order of their start, then by id; "no-date" last.
  std::vector<MediaGroup> groups;
  std::vector<HomeCandidate> homeCandidates;
  bool homeIsAmbiguous = false;

  friend bool operator==(const Result&, const Result&) = default;
};

/// Whether the engine can group by a mode. Events and trips are not there yet.
bool supports(const GroupingMode& mode);

/// Filters the bundles and groups the survivors. Never fails for a supported mode; no bundles give
/// no groups.
Result group(const Request& request);

}  // namespace GroupingEngine

}  // namespace tavrix
