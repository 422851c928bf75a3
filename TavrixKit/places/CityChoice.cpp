#include "places/CityChoice.h"

#include <algorithm>
#include <cmath>
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
constexpr double countryReachKm = 80;

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

std::optional<std::string_view> countryAt(const GazetteerTable& table, const GeoPoint& point) {
  struct Near {
    double distance;
    std::size_t index;
  };
  std::vector<Near> around;
  for (const Part part : {Part::large, Part::small}) {
    table.visitAround(point, 1.5 * countryReachKm, part, [&](std::size_t index) {
      around.push_back({haversineDistanceKm(point, table.pointAt(index)), index});
    });
  }
  const auto nearest =
      std::min_element(around.begin(), around.end(),
                       [](const Near& a, const Near& b) { return a.distance < b.distance; });
  if (nearest == around.end() || nearest->distance > countryReachKm) return std::nullopt;
  const std::string_view country = table.at(nearest->index).country;
  const double agreed = std::max(1.5 * nearest->distance, nearest->distance + 20);
  const bool isAlone = std::all_of(around.begin(), around.end(), [&](const Near& each) {
    return each.distance > agreed || table.at(each.index).country == country;
  });
  return isAlone ? std::optional{country} : std::nullopt;
}

}  // namespace tavrix::CityChoice
