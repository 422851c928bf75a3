#include "places/CityChoice.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace tavrix::CityChoice {
namespace {

using Part = GazetteerTable::Part;

// Bounds the search radii for a table with wrong populations. The small part of the table holds the
// places below 100,000.
constexpr std::uint32_t largestPopulation = 40'000'000;
constexpr std::uint32_t largestOfSmallPart = 100'000;

constexpr std::uint64_t mainCityFactor = 2;
constexpr double mainCityShare = 2.0 / 3;
constexpr double areaReachKm = 80;
constexpr double surroundingKm = 120;
constexpr double landReachKm = 400;

struct Candidate {
  std::size_t city;
  bool isPart;
  double distance;
  double score;
};

/// Returns the places that reach a point and are on its side of every border.
std::vector<Candidate> placesReaching(const GazetteerTable& table, const GeoPoint& point) {
  const auto country = table.borders().countryAt(point);
  std::vector<Candidate> candidates;
  const auto consider = [&](std::size_t index) {
    const double distance = haversineDistanceKm(point, table.pointAt(index));
    const std::uint32_t population = table.populationAt(index);
    if (distance > reachKm(population) || !isSameSide(table, index, country)) return;
    if (const auto city = table.cityAt(index)) {
      candidates.push_back({*city, *city != index, distance, score(distance, population)});
    }
  };
  table.visitAround(point, reachKm(largestPopulation), Part::large, consider);
  table.visitAround(point, reachKm(largestOfSmallPart), Part::small, consider);
  return candidates;
}

struct Near {
  GeoPoint point;
  std::uint16_t region;
  double distance;
};

/// Returns the places of a country within `radiusKm` of a point.
std::vector<Near> placesAround(const GazetteerTable& table, const GeoPoint& point, double radiusKm,
                               std::uint8_t country) {
  std::vector<Near> around;
  for (const Part part : {Part::large, Part::small}) {
    table.visitAround(point, radiusKm, part, [&](std::size_t index) {
      if (table.countryNumberAt(index) != country) return;
      const GeoPoint place = table.pointAt(index);
      const double distance = haversineDistanceKm(point, place);
      if (distance > radiusKm) return;
      around.push_back({place, table.regionNumberAt(index), distance});
    });
  }
  return around;
}

/// Returns the initial direction of the great circle to another point, in radians from north.
double bearing(const GeoPoint& from, const GeoPoint& to) {
  const double radians = std::numbers::pi / 180;
  const double latitude = from.latitude * radians;
  const double otherLatitude = to.latitude * radians;
  const double turn = (to.longitude - from.longitude) * radians;
  return std::atan2(std::sin(turn) * std::cos(otherLatitude),
                    std::cos(latitude) * std::sin(otherLatitude) -
                        std::sin(latitude) * std::cos(otherLatitude) * std::cos(turn));
}

/// Returns true if every half-plane contains at least one of the directions.
bool areOnAllSides(std::vector<double> bearings) {
  if (bearings.empty()) return false;
  std::sort(bearings.begin(), bearings.end());
  double widest = bearings.front() + 2 * std::numbers::pi - bearings.back();
  for (std::size_t i = 1; i < bearings.size(); ++i) {
    widest = std::max(widest, bearings[i] - bearings[i - 1]);
  }
  return widest < std::numbers::pi;
}

/// Returns true if the places of a region are on all sides of a point.
bool isSurrounded(const GeoPoint& point, const std::vector<Near>& around, std::uint16_t region) {
  std::vector<double> bearings;
  for (const Near& each : around) {
    if (each.region == region) bearings.push_back(bearing(point, each.point));
  }
  return areOnAllSides(std::move(bearings));
}

}  // namespace

double radiusKm(std::uint32_t population) {
  return 0.88 * std::pow(std::min(population, largestPopulation) / 1000.0, 0.4);
}

double reachKm(std::uint32_t population) { return 10 + 1.5 * radiusKm(population); }

double score(double distanceKm, std::uint32_t population) {
  const double radius = radiusKm(population);
  if (distanceKm <= radius && radius > 0) return distanceKm / radius - 1;
  return (distanceKm - radius) / (2 + 0.3 * radius);
}

bool isSameSide(const GazetteerTable& table, std::size_t index,
                std::optional<std::uint8_t> country) {
  return !country || table.countryNumberAt(index) == *country || table.isAstray(index);
}

double regionScore(const GazetteerTable& table, std::size_t city, double score, bool isPart,
                   const Regions& regions) {
  const std::uint16_t region = table.regionNumberAt(city);
  const bool isOwn = score <= ownScore;
  if (regions.around != 0 && score > (isPart ? ownScore : innerScore)) {
    const bool isSame =
        region == regions.around || table.regionGrid().at(table.pointAt(city)) == regions.around;
    return isSame ? 0 : acrossScore;
  }
  return !isOwn && region != regions.nearest ? otherRegionScore : 0;
}

std::optional<Choice> cityAt(const GazetteerTable& table, const GeoPoint& point) {
  const std::vector<Candidate> candidates = placesReaching(table, point);
  if (candidates.empty()) return std::nullopt;
  const auto nearest = std::min_element(
      candidates.begin(), candidates.end(),
      [](const Candidate& a, const Candidate& b) { return a.distance < b.distance; });
  const Regions regions{table.regionNumberAt(nearest->city), regionAllAround(table, point)};
  std::optional<Choice> best;
  for (const Candidate& each : candidates) {
    const double score =
        each.score + regionScore(table, each.city, each.score, each.isPart, regions);
    if (!best || score < best->score) best = Choice{each.city, score};
  }
  return best;
}

namespace {

/// Returns the larger city to which a place directly belongs.
std::optional<std::size_t> cityAround(const GazetteerTable& table, std::size_t index) {
  const GazetteerPlace part = table.at(index);
  std::optional<Choice> best;
  const auto consider = [&](std::size_t other) {
    const std::uint32_t population = table.populationAt(other);
    if (table.cityAt(other) != other) return;
    // A damaged table may have places with population 0, each of which is twice as large as itself.
    if (population == 0 || population < mainCityFactor * part.population) return;
    const double distance = haversineDistanceKm(part.point, table.pointAt(other));
    if (distance > mainCityShare * radiusKm(population)) return;
    const GazetteerPlace city = table.at(other);
    const bool isApart = city.district != 0 && part.district != 0 && city.district != part.district;
    if (city.country != part.country || city.region != part.region || isApart) return;
    const Choice candidate{other, score(distance, population)};
    if (!best || candidate.score < best->score) best = candidate;
  };
  table.visitAround(part.point, mainCityShare * radiusKm(largestPopulation), Part::large, consider);
  return best ? std::optional{best->index} : std::nullopt;
}

}  // namespace

std::optional<std::size_t> mainCityOf(const GazetteerTable& table, std::size_t index) {
  // Each step at least doubles the population, so the loop ends.
  auto city = cityAround(table, index);
  while (city) {
    const auto next = cityAround(table, *city);
    if (!next) break;
    city = next;
  }
  return city;
}

std::uint16_t regionAllAround(const GazetteerTable& table, const GeoPoint& point) {
  constexpr double cell = 1.0 / RegionGrid::cellsPerDegree;
  std::uint16_t region = 0;
  for (const double north : {-cell, 0.0, cell}) {
    for (const double east : {-cell, 0.0, cell}) {
      const auto there = table.regionGrid().at({point.latitude + north, point.longitude + east});
      if (region == 0) region = there;
      if (there != region && there != 0) return 0;
    }
  }
  return region;
}

std::uint16_t regionOf(const GazetteerTable& table, const GeoPoint& point, std::uint8_t country) {
  constexpr int mostCells = 10;
  constexpr double cell = 1.0 / RegionGrid::cellsPerDegree;
  const auto regionAt = [&](int north, int east) -> std::uint16_t {
    const GeoPoint there{point.latitude + north * cell, point.longitude + east * cell};
    const std::uint16_t region = table.regionGrid().at(there);
    return region != 0 && table.regionAt(region).country == country ? region : 0;
  };
  if (const auto region = regionAt(0, 0); region != 0) return region;
  // On a coast the point may be in a cell of water: the rings of cells around it follow.
  for (int away = 1; away <= mostCells; ++away) {
    for (int along = -away; along <= away; ++along) {
      for (const auto& [north, east] :
           {std::pair{-away, along}, {away, along}, {along, -away}, {along, away}}) {
        if (const auto region = regionAt(north, east); region != 0) return region;
      }
    }
  }
  return 0;
}

Area areaAt(const GazetteerTable& table, const GeoPoint& point) {
  const auto country = table.borders().countryAt(point);
  if (!country) return {};
  if (const auto region = regionOf(table, point, *country); region != 0) {
    return {table.country(*country), region};
  }
  const std::vector<Near> around = placesAround(table, point, surroundingKm, *country);
  if (around.empty() && placesAround(table, point, landReachKm, *country).empty()) return {};
  const auto nearest =
      std::min_element(around.begin(), around.end(),
                       [](const Near& a, const Near& b) { return a.distance < b.distance; });
  Area area{table.country(*country)};
  if (nearest == around.end() || nearest->distance > areaReachKm) return area;
  const double agreed = std::max(1.5 * nearest->distance, nearest->distance + 20);
  const bool isOneRegion = std::all_of(around.begin(), around.end(), [&](const Near& each) {
    return each.distance > agreed || each.region == nearest->region;
  });
  if (isOneRegion && isSurrounded(point, around, nearest->region)) area.region = nearest->region;
  return area;
}

}  // namespace tavrix::CityChoice
