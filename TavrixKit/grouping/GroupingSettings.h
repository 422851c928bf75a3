#pragma once

#include <memory>
#include <optional>

#include "foundation/GeoPoint.h"
#include "foundation/TimeZone.h"
#include "media/ShotClock.h"

namespace tavrix {

/// The thresholds of grouping. A distance or pause equal to its threshold does not split.
struct GroupingSettings {
  TimeZone timeZone = TimeZone::utc();   ///< the zone of all calendar days, months and years
  bool cameraDays = false;               ///< whether days are those of the cameras' clocks
  double eventGapHours = 4.0;            ///< a longer pause between shots starts a new event
  double eventGapKm = 30.0;              ///< a greater distance between shots starts a new event
  bool splitByDistance = true;           ///< whether distance splits events at all
  double placeRadiusKm = 2.0;            ///< radius of one place
  double tripDistanceKm = 100.0;         ///< a shot farther than this from home is away
  int tripMinDays = 2;                   ///< a stay with fewer calendar days is an outing
  double tripCityKm = 50.0;              ///< a shot farther from the stay's centre ends the stay
  double homeRadiusKm = 20.0;            ///< radius within which points are the same home
  int homeWindowDays = 180;              ///< recent days for home, up to the newest located shot
  std::optional<GeoPoint> homeOverride;  ///< a home chosen by the user
  bool homePeriods = false;              ///< whether each time has a home of its own
  double tripMaxGapHours = 48.0;         ///< a longer pause between away shots ends a trip

  std::shared_ptr<const PlaceZones> placeZones{};  ///< for cameraDays

  ShotClock clock() const { return {timeZone, cameraDays, placeZones}; }

  friend bool operator==(const GroupingSettings&, const GroupingSettings&) = default;
};

}  // namespace tavrix
