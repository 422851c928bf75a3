#include "places/DistrictChoice.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "places/CityChoice.h"

namespace tavrix::DistrictChoice {
namespace {

// Bounds the search for a table with wrong populations.
constexpr std::uint32_t largestPopulation = 50'000;

struct Near {
  std::size_t index;
  double distance;
};

double radiusKm(std::uint32_t population, double share) {
  return std::max(smallestRadiusKm,
                  share * CityChoice::radiusKm(std::min(population, largestPopulation)));
}

/// Returns the parts of cities around a point, up to the distance that matters for the choice.
std::vector<Near> partsAround(const GazetteerTable& table, const GeoPoint& point) {
  static const double searchKm = radiusKm(largestPopulation, denseRadiusShare) / distanceShare;
  std::vector<Near> parts;
  table.visitAround(point, searchKm, GazetteerTable::Part::small, [&](std::size_t index) {
    if (!table.isPart(index)) return;
    const double distance = haversineDistanceKm(point, table.pointAt(index));
    if (distance <= searchKm) parts.push_back({index, distance});
  });
  return parts;
}

}  // namespace

std::optional<std::size_t> districtAt(const GazetteerTable& table, const GeoPoint& point) {
  const std::vector<Near> parts = partsAround(table, point);
  const auto nearest = std::ranges::min_element(parts, {}, &Near::distance);
  const std::uint32_t number = nearest == parts.end() ? 0 : table.districtAt(nearest->index).number;
  if (number == 0) return std::nullopt;
  double next = std::numeric_limits<double>::infinity();
  std::size_t others = 0;
  for (const Near& each : parts) {
    if (table.districtAt(each.index).number == number) continue;
    next = std::min(next, each.distance);
    ++others;
  }
  const double share = others >= denseCount ? denseRadiusShare : radiusShare;
  const bool isInside = nearest->distance <= radiusKm(table.populationAt(nearest->index), share);
  if (!isInside || nearest->distance > distanceShare * next) return std::nullopt;
  return nearest->index;
}

}  // namespace tavrix::DistrictChoice
