#pragma once

#include <optional>

#include "foundation/GeoPoint.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// The time zones of places. Safe to call from several threads.
class PlaceZones {
 public:
  virtual ~PlaceZones() = default;
  /// Returns the zone at a point, or nullopt if it is not known.
  virtual std::optional<TimeZone> zoneAt(const GeoPoint& point) const = 0;
};

}  // namespace tavrix
