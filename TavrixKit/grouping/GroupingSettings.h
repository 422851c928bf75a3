#pragma once

#include <optional>

#include "foundation/GeoPoint.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// Thresholds of grouping. A distance or pause equal to its threshold does not split.
struct GroupingSettings {
  TimeZone timeZone = TimeZone::utc();   ///< every calendar boundary is cut in this zone
  double eventGapHours = 4.0;            ///< a longer pause between shots starts a new event
  double eventGapKm = 30.0;              ///< a farther jump between shots starts a new event
  bool splitByDistance = true;           ///< whether distance splits events at all
  double placeRadiusKm = 2.0;            ///< radius of one place
  double tripDistanceKm = 100.0;         ///< a shot farther than this from home is away
  int tripMinDays = 2;                   ///< a shorter absence, in calendar days, is an outing
  double tripCityKm = 50.0;              ///< two away shots closer than this are in one city
  double homeRadiusKm = 20.0;            ///< radius within which points count as the same home
  int homeWindowDays = 180;              ///< how far back from the newest shot home is looked for
  std::optional<GeoPoint> homeOverride;  ///< a home chosen by the person
  double tripMaxGapHours = 48.0;         ///< no shot for longer than this ends a trip

  friend bool operator==(const GroupingSettings&, const GroupingSettings&) = default;
};

}  // namespace tavrix
