#pragma once

#include <cstddef>
#include <optional>

#include "places/GazetteerTable.h"

/// Chooses the quarter of a large city that a point is in, from the points of the table that stand
/// for parts of cities. A wrong quarter is worse than none.
namespace tavrix::DistrictChoice {

/// The radius of a quarter is a share of that of a town with as many people, but at least
/// smallestRadiusKm. The share is larger where the source has enough quarters around the point that
/// few are missing: denseCount others within the search. The numbers are fitted to half of the list
/// of quarters.
inline constexpr double radiusShare = 0.2;
inline constexpr double denseRadiusShare = 0.35;
inline constexpr std::size_t denseCount = 3;
inline constexpr double smallestRadiusKm = 0.4;
/// A point is nearer to its quarter than this share of the distance to the next one.
inline constexpr double distanceShare = 0.6;

/// Returns the index of the part of a city whose quarter contains the point. It is the part nearest
/// to the point. Returns nullopt if it has no name, if the point is farther from it than its
/// radius, or if another quarter is about as near.
std::optional<std::size_t> districtAt(const GazetteerTable& table, const GeoPoint& point);

}  // namespace tavrix::DistrictChoice
