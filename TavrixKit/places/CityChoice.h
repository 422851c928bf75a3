#pragma once

#include <optional>

#include "places/GazetteerTable.h"

/// Which place of the table a point belongs to: not the one with the nearest centre, but the one
/// whose size reaches the point.
namespace tavrix::CityChoice {

/// Kilometres around its centre that a place of so many people fills: 1.2 · ∛(people / 1000), 12
/// for a million. The area grows with the two-thirds power of the population, as built-up areas
/// roughly do (S. Nordbeck, "Urban Allometric Growth", 1971).
double radiusKm(std::uint32_t population);

/// Kilometres from its centre up to which a point may be named after a place: ten, and twice the
/// radius.
double reachKm(std::uint32_t population);

/// How well a place fits a point so far from its centre; the lowest wins. Inside the radius it is
/// distance / radius − 1, so a suburb's own centre beats the city beside it, while a village inside
/// a city has to be right at the point; outside it is the kilometres to the edge.
double score(double distanceKm, std::uint32_t population);

struct Choice {
  std::size_t index;  ///< into the table
  double score;

  friend bool operator==(const Choice&, const Choice&) = default;
};

/// The place with the lowest score among those that reach the point; of equal ones the first in the
/// table. A capital of another country wins inside six tenths of its radius, however large its
/// neighbour is. Nothing when no place reaches the point.
std::optional<Choice> cityAt(const GazetteerTable& table, const GeoPoint& point);

/// The city that a place is a part of: at least twice as large, of the same region (and of no other
/// district when both name theirs), with the place's centre inside eight tenths of its radius; the
/// one that fits best. Nothing for a place that stands for itself.
std::optional<std::size_t> mainCityOf(const GazetteerTable& table, std::size_t index);

/// Where a point lies that no city reaches. Empty for the sea, a border, the middle of nowhere.
struct Area {
  std::string_view country;
  std::uint16_t region = 0;  ///< the number in the table; 0 when only the country can be told

  friend bool operator==(const Area&, const Area&) = default;
};

/// Country and region of the nearest place within 80 km, each when all places up to half as far
/// again (and at least 20 km farther) agree on it. Beyond a border that nobody lives at they would,
/// too: so the region is told only when its places up to 120 km off lie on all sides of the point,
/// and the country only then or when no place within 160 km is another's.
Area areaAt(const GazetteerTable& table, const GeoPoint& point);

}  // namespace tavrix::CityChoice
