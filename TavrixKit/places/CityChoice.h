#pragma once

#include <optional>

#include "places/GazetteerTable.h"

/// Chooses the place of the table after which a point is named: not the place with the nearest
/// centre, but the one whose size reaches the point.
namespace tavrix::CityChoice {

/// Returns the radius in kilometres of a place with this population:
/// 0.88 · (population / 1000) ^ 0.4, which is 14 for a million. The exponent is greater than the
/// 1/3 with which built-up areas grow (S. Nordbeck, "Urban Allometric Growth", 1971), because the
/// parts of a great city are named after the city, too. It is fitted to the check list.
double radiusKm(std::uint32_t population);

/// Returns the greatest distance in kilometres between the centre of a place and a point that may
/// be named after it: 10 + 1.5 · radius.
double reachKm(std::uint32_t population);

/// Returns a score for how well a place fits a point at `distanceKm` from its centre; the lowest
/// score wins. Inside the radius it is distance / radius − 1. So the centre of a suburb beats the
/// city beside it, but a village inside a city wins only right at the point. Outside the radius it
/// is the distance to the edge in kilometres / (2 + 0.3 · radius).
double score(double distanceKm, std::uint32_t population);

/// Added to a score above −0.4 (`ownScore`) if the place is in another region than the place
/// nearest to the point.
inline constexpr double otherRegionScore = 0.5;
inline constexpr double ownScore = -0.4;
/// Added instead, to every score, if the point is well inside the area of another region than that
/// of the place, as on the other shore of a bay.
inline constexpr double acrossScore = 4;
/// The score of a city up to which acrossScore is not added; for a part of a city it is ownScore.
/// That deep inside a city, the area of the region is drawn too roughly.
inline constexpr double innerScore = -0.58;

/// The regions by which the score of a place is corrected; 0 if unknown.
struct Regions {
  std::uint16_t nearest = 0;  ///< of the place nearest to the point
  std::uint16_t around = 0;   ///< regionAllAround()
};

/// Returns the number added to the score of a place of `city`: otherRegionScore, acrossScore or 0.
/// A city is in its own region and in that whose area contains its centre.
double regionScore(const GazetteerTable& table, std::size_t city, double score, bool isPart,
                   const Regions& regions);

struct Choice {
  std::size_t index;  ///< into the table
  double score;

  friend bool operator==(const Choice&, const Choice&) = default;
};

/// Returns true if a point in the area of `country` may be named after a place: the place belongs
/// to this country, or is itself in the area of a country that is not its own. Always true if the
/// point is in no area.
bool isSameSide(const GazetteerTable& table, std::size_t index,
                std::optional<std::uint8_t> country);

/// Returns the place with the lowest score among those that reach the point and are on its side of
/// every border. Ties are settled by the order in the table. If the place is a part of a city,
/// returns the city. Returns nullopt if no place reaches the point.
std::optional<Choice> cityAt(const GazetteerTable& table, const GeoPoint& point);

/// Returns the main city of a place, or nullopt if it has none. A place belongs to a city with at
/// least twice its population and the same region, if the place's centre is within two thirds of
/// the city's radius. If both have a district, it must be the same. Among several cities the best
/// score wins. If the city found belongs to another city itself, returns that one, and so on.
std::optional<std::size_t> mainCityOf(const GazetteerTable& table, std::size_t index);

/// The country and region of a point that no city reaches. Empty at sea, at a border or far from
/// every place.
struct Area {
  std::string_view country;
  std::uint16_t region = 0;  ///< number in the table; 0 if only the country is certain

  friend bool operator==(const Area&, const Area&) = default;
};

/// Returns the region whose area contains the cell of a point and the eight cells around it, apart
/// from those of water; 0 if there is none.
std::uint16_t regionAllAround(const GazetteerTable& table, const GeoPoint& point);

/// Returns the region of the country whose area contains a point, or which is at most about 20 km
/// away, as on a coast; 0 if there is none.
std::uint16_t regionOf(const GazetteerTable& table, const GeoPoint& point, std::uint8_t country);

/// Returns the country whose area contains the point, and the region: that of regionOf(), otherwise
/// that of the nearest place of the country, at most 80 km away, if it is certain. It is certain if
/// two conditions hold: all places of the country up to 1.5 times as far (at least 20 km farther)
/// are in this region, and the region's places within 120 km are on all sides of the point. The
/// result is empty if the point has no region and is more than 400 km from every place of the
/// country, because the area of a country extends into the sea.
Area areaAt(const GazetteerTable& table, const GeoPoint& point);

}  // namespace tavrix::CityChoice
