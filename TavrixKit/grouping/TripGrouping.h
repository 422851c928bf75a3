#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/MediaGroup.h"

namespace tavrix::TripGrouping {

/// Consecutive shots of one city away from home: those with the indices `begin` to `end`, the
/// latter not included. The first and the last of them are away; those without a position between
/// belong to it.
struct Stay {
  std::size_t begin = 0;
  std::size_t end = 0;
  GeoPoint center;        ///< spherical mean of its points
  std::int64_t days = 0;  ///< different calendar days of its shots
  StayBegin beginReason;
  StayEnd endReason;

  bool isTrip(const GroupingSettings& settings) const { return days >= settings.tripMinDays; }
  friend bool operator==(const Stay&, const Stay&) = default;
};

/// The stays of shots in capture order. A shot is away when it is farther than `tripDistanceKm`
/// from home. A located shot that is not away ends a stay; so does an away shot that follows the
/// last one after more than `tripMaxGapHours`, or is farther than `tripCityKm` from the stay's
/// centre, and begins the next. Without a home there are none.
std::vector<Stay> stays(const std::vector<DatedShot>& shots, const std::optional<GeoPoint>& home,
                        const GroupingSettings& settings);

struct Result {
  std::vector<MediaGroup> groups;  ///< the trips, then the months
  std::optional<TripReasons> reasons;
};

/// One group for each stay of at least `tripMinDays` days, its id "trip-" and the day of its first
/// shot (the second trip of a day has "-2" after it), and one for each calendar month of all other
/// shots, its id "month-" and the month. Reasons only when they are wanted: they cost a value for
/// each shot in a month.
Result group(const std::vector<DatedShot>& shots, const std::optional<GeoPoint>& home,
             const GroupingSettings& settings, bool wantsReasons);

}  // namespace tavrix::TripGrouping
