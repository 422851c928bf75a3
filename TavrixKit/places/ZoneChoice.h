#pragma once

#include <string_view>

#include "places/GazetteerTable.h"

/// Chooses the time zone of a point.
namespace tavrix::ZoneChoice {

/// Returns the identifier of the zone at a point, as the nearest place has it that is at most
/// 400 km away, on the point's side of every border and, if there is one, in the region whose area
/// contains the point: most zones end where a region ends. Returns an empty text if there is no
/// such place, as on the high seas.
std::string_view zoneIDAt(const GazetteerTable& table, const GeoPoint& point);

}  // namespace tavrix::ZoneChoice
