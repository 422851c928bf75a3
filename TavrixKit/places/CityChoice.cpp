#include "places/CityChoice.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace tavrix::CityChoice {
namespace {

using Part = GazetteerTable::Part;

// No city is larger, whatever a table says; the table's small part holds those below 100,000.
constexpr std::uint32_t largestPopulation = 40'000'000;
constexpr std::uint32_t largestOfSmallPart = 100'000;

constexpr double capitalShare = 0.6;
constexpr std::uint64_t mainCityFactor = 2;
constexpr double mainCityShare = 0.8;
constexpr double areaReachKm = 80;
constexpr double surroundingKm = 120;
constexpr double abroadKm = 160;

/// Visits index, distance and population of the places that reach a point.
template <typename Visit>
void visitReaching(const GazetteerTable& table, const GeoPoint& point, Visit visit) {
  const auto consider = [&](std::size_t index) {
    const double distance = haversineDistanceKm(point, table.pointAt(index));
    const std::uint32_t population = table.populationAt(index);
    if (distance <= reachKm(population)) visit(index, distance, population);
  };
  table.visitAround(point, reachKm(largestPopulation), Part::large, consider);
  table.visitAround(point, reachKm(largestOfSmallPart), Part::small, consider);
}

struct Near {
  GazetteerPlace place;
  double distance;
};

/// The places up to so far from a point.
std::vector<Near> placesAround(const GazetteerTable& table, const GeoPoint& point,
                               double radiusKm) {
  std::vector<Near> around;
  for (const Part part : {Part::large, Part::small}) {
    table.visitAround(point, radiusKm, part, [&](std::size_t index) {
      const double distance = haversineDistanceKm(point, table.pointAt(index));
      if (distance <= radiusKm) around.push_back({table.at(index), distance});
    });
  }
  return around;
}

/// The direction in which a great circle leaves for another point, in radians from north.
double bearing(const GeoPoint& from, const GeoPoint& to) {
  const double radians = std::numbers::pi / 180;
  const double latitude = from.latitude * radians;
  const double otherLatitude = to.latitude * radians;
  const double turn = (to.longitude - from.longitude) * radians;
  return std::atan2(std::sin(turn) * std::cos(otherLatitude),
                    std::cos(latitude) * std::sin(otherLatitude) -
                        std::sin(latitude) * std::cos(otherLatitude) * std::cos(turn));
}

/// Whether no half-plane is without any of some directions.
bool areOnAllSides(std::vector<double> bearings) {
  if (bearings.empty()) return false;
  std::sort(bearings.begin(), bearings.end());
  double widest = bearings.front() + 2 * std::numbers::pi - bearings.back();
  for (std::size_t i = 1; i < bearings.size(); ++i) {
    widest = std::max(widest, bearings[i] - bearings[i - 1]);
  }
  return widest < std::numbers::pi;
}

/// Whether those of the places that belong to an area lie on all sides of a point.
template <typename Belongs>
bool isSurrounded(const GeoPoint& point, const std::vector<Near>& around, Belongs belongs) {
  std::vector<double> bearings;
  for (const Near& each : around) {
    if (each.distance > surroundingKm || !belongs(each.place)) continue;
    bearings.push_back(bearing(point, each.place.point));
  }
  return areOnAllSides(std::move(bearings));
}

}  // namespace

double radiusKm(std::uint32_t population) {
  return 1.2 * std::cbrt(std::min(population, largestPopulation) / 1000.0);
}

double reachKm(std::uint32_t population) { return 10 + 2 * radiusKm(population); }

double score(double distanceKm, std::uint32_t population) {
  const double radius = radiusKm(population);
  return distanceKm <= radius && radius > 0 ? distanceKm / radius - 1 : distanceKm - radius;
}

std::optional<Choice> cityAt(const GazetteerTable& table, const GeoPoint& point) {
  std::optional<Choice> best;
  std::optional<Choice> capital;
  const auto improve = [](std::optional<Choice>& choice, const Choice& candidate) {
    if (!choice || candidate.score < choice->score) choice = candidate;
  };
  visitReaching(table, point, [&](std::size_t index, double distance, std::uint32_t population) {
    const Choice candidate{index, score(distance, population)};
    improve(best, candidate);
    const bool isDeepInside = distance <= capitalShare * radiusKm(population);
    if (isDeepInside && table.at(index).isCapital) improve(capital, candidate);
  });
  if (capital && table.at(capital->index).country != table.at(best->index).country) return capital;
  return best;
}

std::optional<std::size_t> mainCityOf(const GazetteerTable& table, std::size_t index) {
  const GazetteerPlace part = table.at(index);
  std::optional<Choice> best;
  const auto consider = [&](std::size_t other) {
    const std::uint32_t population = table.populationAt(other);
    if (population < mainCityFactor * part.population) return;
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

Area areaAt(const GazetteerTable& table, const GeoPoint& point) {
  // Most of the Earth has no place within reach, and needs no wider look.
  if (placesAround(table, point, areaReachKm).empty()) return {};
  const std::vector<Near> around = placesAround(table, point, abroadKm);
  const auto nearest =
      std::min_element(around.begin(), around.end(),
                       [](const Near& a, const Near& b) { return a.distance < b.distance; });
  Area area{nearest->place.country, nearest->place.region};
  const auto isInCountry = [&](const GazetteerPlace& place) {
    return place.country == area.country;
  };
  const auto isInRegion = [&](const GazetteerPlace& place) {
    return isInCountry(place) && place.region == area.region;
  };
  const double agreed = std::max(1.5 * nearest->distance, nearest->distance + 20);
  bool isNearBorder = false;
  bool isOneRegion = area.region != 0;
  for (const Near& each : around) {
    const bool isClose = each.distance <= agreed;
    if (isClose && !isInCountry(each.place)) return {};
    if (!isInCountry(each.place)) isNearBorder = true;
    if (isClose && !isInRegion(each.place)) isOneRegion = false;
  }
  if (isNearBorder && !isSurrounded(point, around, isInCountry)) return {};
  if (!isOneRegion || !isSurrounded(point, around, isInRegion)) area.region = 0;
  return area;
}

}  // namespace tavrix::CityChoice
