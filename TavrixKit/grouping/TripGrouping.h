#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupMerging.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/HomePeriods.h"
#include "grouping/MediaGroup.h"

namespace tavrix::TripGrouping {

/// Consecutive shots in one city away from home: the indices from `begin` to `end`, exclusive. The
/// first and the last shot are away. Shots without a position between them belong to the stay.
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

/// Returns the stays of shots, given in capture order. A shot is away if it is farther than
/// `tripDistanceKm` from the home of its time. A located shot that is not away ends a stay. An away
/// shot ends the stay and begins the next one if it comes more than `tripMaxGapHours` after the
/// last away shot, or if it is farther than `tripCityKm` from the stay's centre. Without a home
/// there are no stays.
std::vector<Stay> stays(const std::vector<DatedShot>& shots, const Homes& homes,
                        const GroupingSettings& settings);

/// Returns the ids of stays: "trip-" or, for a stay that is no trip, "outing-", and the day of the
/// first shot; "-2" is appended for the second of a day.
std::vector<std::string> idsOf(const std::vector<DatedShot>& shots, const std::vector<Stay>& stays,
                               const GroupingSettings& settings);

struct Result {
  std::vector<MediaGroup> groups;  ///< the stays that have a group of their own, then the months
  std::optional<TripReasons> reasons;
};

/// Returns one group for each stay of at least `tripMinDays` days, and one for each calendar month
/// of all other shots. An outing is a group, too, if a merge names it and another stay. `stays` and
/// `ids` are those of stays() and idsOf(). The id of a month is "month-" and the month. Reasons are
/// returned only if `wantsReasons` is true, because they need a value for each shot in a month.
Result group(const std::vector<DatedShot>& shots, const Homes& homes,
             const GroupingSettings& settings, const std::vector<Stay>& stays,
             const std::vector<std::string>& ids, const GroupMerges& merges, bool wantsReasons);

}  // namespace tavrix::TripGrouping
