#pragma once

#include <optional>

#include "places/GazetteerTable.h"

/// Which place of the table a point belongs to: not the one with the nearest centre, but the one
/// whose size reaches the point.
namespace tavrix::CityChoice {

/// Kilometres around its centre that a place of so many people fills: 0.88 · (people / 1000) ^ 0.4,
/// 14 for a million. The exponent lies above the third root that built-up areas grow by (S.
/// Nordbeck, "Urban Allometric Growth", 1971), because a great city's parts have names of the city,
/// too; it is fitted to the check list.
double radiusKm(std::uint32_t population);

/// Kilometres from its centre up to which a point may be named after a place: ten, and half as much
/// again as the radius.
double reachKm(std::uint32_t population);

/// How well a place fits a point so far from its centre; the lowest wins. Inside the radius it is
/// distance / radius − 1, so a suburb's own centre beats the city beside it, while a village inside
/// a city has to be right at the point; outside it is the kilometres to the edge / (2 + 0.3 ·
/// radius).
double score(double distanceKm, std::uint32_t population);

/// What is added to a score above −0.4 of a place that lies in another region than the place
/// nearest to the point.
inline constexpr double otherRegionScore = 0.5;
inline constexpr double ownScore = -0.4;

struct Choice {
  std::size_t index;  ///< into the table
  double score;

  friend bool operator==(const Choice&, const Choice&) = default;
};

/// Whether a point may be named after a place: not when the point lies in the area of another
/// country, unless the place itself does.
bool isSameSide(const GazetteerTable& table, std::size_t index,
                std::optional<std::uint8_t> country);

/// The place with the lowest score among those that reach the point on its side of every border; of
/// equal ones the first in the table. When that is a part of a city, the city. Nothing when no
/// place reaches the point.
std::optional<Choice> cityAt(const GazetteerTable& table, const GeoPoint& point);

/// The city that a place belongs to: at least twice as large, of the same region (and of no other
/// district when both name theirs), with the place's centre inside two thirds of its radius; the
/// one that fits best, and of that one the main city again. Nothing for a place that stands for
/// itself.
std::optional<std::size_t> mainCityOf(const GazetteerTable& table, std::size_t index);

/// Where a point lies that no city reaches. Empty for the sea, a border, the middle of nowhere.
struct Area {
  std::string_view country;
  std::uint16_t region = 0;  ///< the number in the table; 0 when only the country can be told

  friend bool operator==(const Area&, const Area&) = default;
};

/// The country whose area the point lies in, and the region of the nearest place of it within 80
/// km, told when all others up to half as far again (and at least 20 km farther) are of it, too,
/// and its places up to 120 km off lie on all sides of the point. Nothing farther than 400 km from
/// every place: a country's area goes out to sea.
Area areaAt(const GazetteerTable& table, const GeoPoint& point);

}  // namespace tavrix::CityChoice
